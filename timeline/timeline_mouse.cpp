#include "timeline_mouse.h"

#include "engine/base_world.h"
#include "timeline_hits.h"
#include "timeline_host.h"
#include "timeline_view.h"

#include <utility>

namespace tarn {

namespace {

constexpr quint32 click_time = 100; ///< milliseconds
constexpr int edge = 30;            ///< pixels in which a drag scrolls, and by how many it does

} // namespace

TimelineMouse::~TimelineMouse() = default;

void TimelineMouse::press(const TimelinePoint& point, quint32 tick)
{
    m_mouse = point;
    m_press_tick = tick;
    m_started = false;
    m_host.hold_time(point.modifiers.testFlag(Qt::ControlModifier));
    TimelineView& view = m_host.timeline();
    view.hover = find_hover(view, point.x, point.y);
    m_drag = point.y < bands::rows_top ? press_bands(m_host, point) : press_rows(m_host, point);
    m_host.redraw_all();
}

void TimelineMouse::move(const TimelinePoint& point, quint32 tick)
{
    m_mouse = point;
    TimelineView& view = m_host.timeline();
    if (!m_drag) {
        if (const TimelineHover hover = find_hover(view, point.x, point.y); !(hover == view.hover)) {
            view.hover = hover;
            m_host.redraw();
        }
        return;
    }
    if (!m_started && quint32(tick - m_press_tick) > click_time) {
        m_started = true;
        if (m_host.world())
            m_host.world()->api_always_refresh(true);
    }
    if (m_started || m_drag->is_immediate())
        m_drag->move(point);
    if (m_started)
        scroll_at_edges();
    m_host.redraw_all();
}

void TimelineMouse::release(const TimelinePoint& point)
{
    const bool was_drag = m_started;
    const auto drag = end_press();
    if (!drag)
        return;
    if (was_drag || drag->is_immediate())
        drag->finish(point);
    else
        drag->click(point);
    TimelineView& view = m_host.timeline();
    view.hover = find_hover(view, point.x, point.y);
    m_host.redraw_all();
}

void TimelineMouse::cancel()
{
    if (const auto drag = end_press()) {
        drag->cancel();
        m_host.redraw_all();
    }
}

std::unique_ptr<TimelineDrag> TimelineMouse::end_press()
{
    set_scrolling(0);
    if (std::exchange(m_started, false) && m_host.world())
        m_host.world()->api_always_refresh(false);
    return std::exchange(m_drag, nullptr);
}

void TimelineMouse::set_scrolling(int direction)
{
    if (std::exchange(m_scrolling, direction) != direction)
        m_host.tick_scrolling(direction != 0);
}

void TimelineMouse::scroll_at_edges()
{
    const bool at_right = m_mouse.x > m_host.timeline().client_width - edge;
    set_scrolling(m_mouse.x < edge ? -1 : at_right ? 1 : 0);
}

void TimelineMouse::scroll_step()
{
    TimelineView& view = m_host.timeline();
    const float step = view.axis.seconds(edge);
    const bool takes_cursor = m_drag && m_drag->takes_cursor_along();
    if (m_scrolling < 0) {
        view.axis.view_origin -= step;
        if (view.axis.view_origin <= 0) {
            view.axis.view_origin = 0;
            set_scrolling(0);
        }
        if (takes_cursor)
            m_host.set_current_time(view.axis.time_from_pixel(float(m_mouse.x)));
    } else if (m_scrolling > 0) {
        view.axis.view_origin += step;
        if (takes_cursor)
            m_host.set_current_time(view.current_time + step);
    }
    m_host.view_moved();
    if (m_drag && !m_drag->is_immediate())
        m_drag->move(m_mouse);
    m_host.redraw_all();
}

} // namespace tarn
