#include "base_plug_ui.h"

#include "child_dlg.h"
#include "control_bar.h"

CBasePlugUi::CBasePlugUi() = default;
CBasePlugUi::~CBasePlugUi() = default;

std::vector<CChildDlg*> CBasePlugUi::mode_windows() const
{
    std::vector<CChildDlg*> windows;
    for (const auto& tab : m_mode_tabs)
        for (CChildDlg* window : {tab->top_window, tab->side_window})
            if (window)
                windows.push_back(window);
    return windows;
}

void CBasePlugUi::on_ui_msg(int code, int, int)
{
    for (CMyControlBar* bar : m_control_bars)
        bar->update_ui(code);
    for (CChildDlg* window : mode_windows())
        window->update_ui(code);
}

void CBasePlugUi::on_world_created(CBaseWorld* world)
{
    for (CMyControlBar* bar : m_control_bars)
        bar->on_world_created(world);
    for (CChildDlg* window : mode_windows())
        window->on_world_created(world);
}

void CBasePlugUi::clear_windows()
{
    m_control_bars.clear();
    m_mode_tabs.clear();
}
