#pragma once

#include "page_base/gui_child_dlg.h"

/// The list of timebars.
class CDlgGuiManagerTimer : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgGuiManagerTimer(QWidget* parent = nullptr)
        : CGuiChildDlg(QStringLiteral("CDlgGuiManagerTimer"), parent)
    {
    }
};
