#include "timer_control_bar.h"

#include "timeline/dlg_top_timer.h"

namespace {

constexpr int template_top_timer = 6566;

} // namespace

void CTimerControlBar::create_page()
{
    m_page = new CDlgTopTimer(this);
    hold(m_page, template_top_timer);
}

void CTimerControlBar::set_locked(bool on)
{
    setFeatures(on ? NoDockWidgetFeatures : DockWidgetClosable | DockWidgetMovable | DockWidgetFloatable);
    setMinimumHeight(on ? height() : 0);
    setMaximumHeight(on ? height() : QWIDGETSIZE_MAX);
}
