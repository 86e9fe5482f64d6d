#pragma once

#include "page_base/gui_child_dlg.h"

/// The list of the menus in the scene.
class CDlgGuiMenu : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgGuiMenu(QWidget* parent = nullptr) : CGuiChildDlg(QStringLiteral("CDlgGuiMenu"), parent) {}
};
