#include "timer_control_bar.h"

#include "core/res_handle_man.h"
#include "timeline/dlg_top_timer.h"

namespace {

constexpr int template_top_timer = 6566;

} // namespace

void CTimerControlBar::create_page()
{
    const CResHandleMan guard(tarn::gui_ui_resources());
    m_page = new CDlgTopTimer(this);
    m_page->Create(template_top_timer, this);
    setWidget(m_page);
}

void CTimerControlBar::on_world_created(CBaseWorld* world)
{
    m_page->on_world_created(world);
}

void CTimerControlBar::update_ui(int code)
{
    m_page->update_ui(code);
}

void CTimerControlBar::set_locked(bool on)
{
    setFeatures(on ? NoDockWidgetFeatures : DockWidgetClosable | DockWidgetMovable | DockWidgetFloatable);
    setMinimumHeight(on ? height() : 0);
    setMaximumHeight(on ? height() : QWIDGETSIZE_MAX);
}
