#pragma once

#include "page_base/gui_child_dlg.h"

/// The list of styles.
class CDlgStyleManager : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgStyleManager(QWidget* parent = nullptr) : CGuiChildDlg(QStringLiteral("CDlgStyleManager"), parent) {}
};
