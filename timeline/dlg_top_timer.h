#pragma once

#include "page_base/gui_child_dlg.h"

/// The tools around the timeline.
class CDlgTopTimer : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgTopTimer(QWidget* parent = nullptr) : CGuiChildDlg(QStringLiteral("CDlgTopTimer"), parent) {}
};
