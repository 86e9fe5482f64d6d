#pragma once

#include "page_base/gui_child_dlg.h"

class CDlgGroup;

/// The page for the attributes of the current control's type: one of a page for each type.
class CChildControls : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CChildControls(QWidget* parent = nullptr);

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;

protected:
    void OnInitDialog() override;

private:
    void choose_page();

    CDlgGroup* m_pages = nullptr;
};
