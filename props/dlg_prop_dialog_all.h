#pragma once

#include "page_base/gui_child_dlg.h"

class CMyRollup;

/// The pages of the selected dialogs, below each other.
class CDlgPropDialogAll : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgPropDialogAll(QWidget* parent = nullptr);

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;

protected:
    void OnInitDialog() override;

private:
    CMyRollup* m_rollup = nullptr;
};
