#pragma once

#include "page_base/gui_child_dlg.h"

/// The properties of the current menu.
class CDlgPropMenu : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgPropMenu(QWidget* parent = nullptr) : CGuiChildDlg(QStringLiteral("CDlgPropMenu"), parent) {}
};
