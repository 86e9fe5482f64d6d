#pragma once

#include "page_base/gui_child_dlg.h"

class CDlgGroup;
class CDlgStyleManager;

/// The side panel of the interface mode: holds the lists of dialogs, controls, styles and menus.
class CDlgToolMain : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgToolMain(QWidget* parent = nullptr);

    /// 0 dialogs, 1 controls, 2 styles, 3 menus.
    void show_page(int index);
    CDlgGroup& group() { return *m_group; }
    CDlgStyleManager& style_manager() const;

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;

protected:
    void OnInitDialog() override;

private:
    CDlgGroup* m_group = nullptr;
};
