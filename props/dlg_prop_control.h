#pragma once

#include "page_base/gui_child_dlg.h"

/// What the selected controls have in common, whatever their type.
class CDlgPropControl : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgPropControl(QWidget* parent = nullptr) : CGuiChildDlg(QStringLiteral("CDlgPropControl"), parent) {}
};
