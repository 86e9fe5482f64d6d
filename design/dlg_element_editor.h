#pragma once

#include "page_base/gui_child_dlg.h"

/// The pictures of an element.
class CDlgElementEditor : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgElementEditor(QWidget* parent = nullptr) : CGuiChildDlg(QStringLiteral("CDlgElementEditor"), parent) {}
};
