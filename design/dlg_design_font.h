#pragma once

#include "page_base/gui_child_dlg.h"

/// The fonts of a style.
class CDlgDesignFont : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgDesignFont(QWidget* parent = nullptr) : CGuiChildDlg(QStringLiteral("CDlgDesignFont"), parent) {}
};
