#pragma once

#include "page_base/gui_child_dlg.h"

/// The pages of the selected dialogs.
class CDlgPropDialogAll : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgPropDialogAll(QWidget* parent = nullptr) : CGuiChildDlg(QStringLiteral("CDlgPropDialogAll"), parent) {}
};
