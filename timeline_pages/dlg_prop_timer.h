#pragma once

#include "page_base/gui_child_dlg.h"

/// The current timebar and its objects.
class CDlgPropTimer : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgPropTimer(QWidget* parent = nullptr) : CGuiChildDlg(QStringLiteral("CDlgPropTimer"), parent) {}
};
