#include "base_plug_ui.h"

#include "child_dlg.h"
#include "control_bar.h"

CBasePlugUi::CBasePlugUi() = default;
CBasePlugUi::~CBasePlugUi() = default;

template <class Call>
void CBasePlugUi::for_each_mode_window(Call call) const
{
    for (const auto& tab : m_mode_tabs)
        for (CChildDlg* window : {tab->top_window, tab->side_window})
            if (window)
                call(*window);
}

void CBasePlugUi::on_ui_msg(int code, int, int)
{
    for (CMyControlBar* bar : m_control_bars)
        bar->update_ui(code);
    for_each_mode_window([code](CChildDlg& window) { window.update_ui(code); });
}

void CBasePlugUi::on_world_created(CBaseWorld* world)
{
    for (CMyControlBar* bar : m_control_bars)
        bar->on_world_created(world);
    for_each_mode_window([world](CChildDlg& window) { window.on_world_created(world); });
}

void CBasePlugUi::clear_windows()
{
    m_control_bars.clear();
    m_mode_tabs.clear();
    m_menu_actions.clear();
}
