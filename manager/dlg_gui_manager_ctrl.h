#pragma once

#include "page_base/gui_child_dlg.h"

/// The list of controls.
class CDlgGuiManagerCtrl : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgGuiManagerCtrl(QWidget* parent = nullptr) : CGuiChildDlg(QStringLiteral("CDlgGuiManagerCtrl"), parent)
    {
    }
};
