#pragma once

#include "engine/base_world.h"
#include "engine/plug_info.h"

#include <QString>

#include <memory>
#include <vector>

class CChildDlg;
class CMyControlBar;
class QAction;
class QMainWindow;
class QWidget;

/// One mode of the editor: a tab of the side panel with a window there and, if it wants, one above the view. The
/// windows belong to the plug-in.
struct CMyTabDlg {
    QString name; ///< what automation calls the mode, the same in every language
    QString title;
    int first_icon = 0; ///< shown while another mode is active
    int second_icon = 0;
    CChildDlg* top_window = nullptr;
    CChildDlg* side_window = nullptr;
};

/// A plug-in that adds windows to the program. The host drives it through these operations, in this order.
class CBasePlugUi : public CPlugInfo, public tarn::UiListener {
public:
    CBasePlugUi();
    ~CBasePlugUi() override;

    /// Makes the windows of the modes; the control bars exist already.
    virtual void create_tab_windows(QWidget* top_parent, QWidget* side_parent) = 0;
    /// Makes and docks the control bars.
    virtual void create_control_bars(QMainWindow* frame) = 0;
    virtual void destroy_windows() = 0;
    /// The world runs: the plug-in may set up its mouse tools.
    virtual void create_mt_after_world_run() {}
    /// A notification of the host; the base hands the code to the bars and to the windows of the modes.
    virtual void on_ui_msg(int code, int a, int b);
    virtual QString get_plug_group() = 0;
    virtual QString get_plug_name() = 0;

    /// Tells bars and windows that the world exists.
    void on_world_created(CBaseWorld* world);
    void update_ui(int code) override { on_ui_msg(code, 0, 0); }

    const std::vector<CMyControlBar*>& control_bars() const { return m_control_bars; }
    const std::vector<std::unique_ptr<CMyTabDlg>>& mode_tabs() const { return m_mode_tabs; }
    /// What the program's Edit menu offers of the plug-in, with keys that work in the whole window.
    const std::vector<QAction*>& menu_actions() const { return m_menu_actions; }

protected:
    void add_control_bar(CMyControlBar* bar) { m_control_bars.push_back(bar); }
    void add_mode_tab(std::unique_ptr<CMyTabDlg> tab) { m_mode_tabs.push_back(std::move(tab)); }
    void add_menu_action(QAction* action) { m_menu_actions.push_back(action); }
    /// Forgets bars, tabs and actions, whose windows are gone.
    void clear_windows();

private:
    template <class Call>
    void for_each_mode_window(Call call) const;

    std::vector<CMyControlBar*> m_control_bars;
    std::vector<std::unique_ptr<CMyTabDlg>> m_mode_tabs;
    std::vector<QAction*> m_menu_actions;
};
