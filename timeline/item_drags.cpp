#include "item_drags.h"

#include "animation/t_var.h"
#include "core/language.h"
#include "timeline_edits.h"
#include "timeline_host.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr int least_way = 5; // pixels, for a drag
// The ends of what is selected, by which it is stretched.
constexpr int end_reach = 4;
constexpr float least_stretched = 12;

void tell_first_keys(TimelineHost& host, const SelectionDrag& items)
{
    if (items.holds_first_keys())
        host.say(lang(u"变量的第一个关键帧保持不动", u"The first keys of variables stay where they are"));
}

} // namespace

// Keys or script keys ------------------------------------------------------------------------------------------------

ItemsDrag::ItemsDrag(TimelineHost& host, const TimelinePoint& press, float grabbed, SelectionDrag::Items items)
    : m_host(host),
      m_items(host.timeline(), items),
      m_snap(host.timeline()),
      m_press(press),
      m_press_time(time_at(press)),
      m_grabbed(grabbed)
{
}

bool ItemsDrag::has_moved(const TimelinePoint& point) const
{
    return std::abs((point.x - m_press.x) + (point.y - m_press.y)) > least_way;
}

float ItemsDrag::time_at(const TimelinePoint& point) const
{
    return m_host.timeline().axis.time_from_pixel(float(point.x));
}

void ItemsDrag::move(const TimelinePoint& point)
{
    m_is_off = has_moved(point) && is_off_timeline(m_host.timeline(), point.y);
    const bool shift = point.modifiers.testFlag(Qt::ShiftModifier) && !m_press.modifiers.testFlag(Qt::ShiftModifier);
    m_items.set_ripple(shift != m_host.timeline().ripple);
    if (has_moved(point) && !m_is_off) {
        m_items.move(m_items.limited(target(point) - m_grabbed));
        tell_first_keys(m_host, m_items);
    } else if (m_items.has_moved()) {
        m_items.move(0);
    }
    if (m_is_off)
        m_host.say(lang(u"松开以删除", u"Let go to delete"));
}

void ItemsDrag::finish(const TimelinePoint& point)
{
    move(point);
    if (m_is_off) {
        m_items.restore();
        drop_off();
    } else if (m_items.is_refused()) {
        m_items.restore();
        tell_script_is_there(m_host);
    } else if (m_items.has_moved()) {
        const float offset = has_moved(point) ? m_items.limited(target(point) - m_grabbed) : 0;
        m_items.keep();
        if (offset != 0)
            dropped(m_grabbed + offset);
    }
}

Qt::CursorShape ItemsDrag::cursor() const
{
    return m_is_off ? Qt::ForbiddenCursor : Qt::SizeHorCursor;
}

float ScriptsDrag::target(const TimelinePoint& point)
{
    return m_snap(time_at(point), point.modifiers);
}

void ScriptsDrag::drop_off()
{
    delete_selected(m_host, selected_kinds(m_host.timeline().selection));
}

float KeysDrag::target(const TimelinePoint& point)
{
    return m_snap(m_grabbed + (time_at(point) - m_press_time), point.modifiers);
}

void KeysDrag::drop_off()
{
    delete_selected(m_host, selected_kinds(m_host.timeline().selection));
}

void KeysDrag::dropped(float time)
{
    m_host.set_current_time(time);
}

// The whole selection ------------------------------------------------------------------------------------------------

SpanDrag::SpanDrag(TimelineHost& host, const TimelinePoint& press)
    : m_host(host), m_items(host.timeline(), SelectionDrag::Items::All), m_snap(host.timeline())
{
    const TimelineView& view = host.timeline();
    m_press_time = view.axis.time_from_pixel(float(press.x));
    const float start = view.selection.section_start();
    const float end = view.selection.section_end();
    const float left = view.axis.pixel_from_time(start);
    const float right = view.axis.pixel_from_time(end);
    const auto x = float(press.x);
    const bool is_wide = right - left > least_stretched;
    const bool at_end = is_wide && x >= right - end_reach;
    m_stretches = at_end || (is_wide && x <= left + end_reach);
    m_edge = at_end ? end : start;
    m_anchor = at_end ? start : end;
}

void SpanDrag::move(const TimelinePoint& point)
{
    const TimelineView& view = m_host.timeline();
    m_is_off = !m_stretches && is_off_timeline(view, point.y);
    if (m_is_off) {
        m_items.move(0);
        m_host.say(lang(u"松开以删除", u"Let go to delete"));
        return;
    }
    const float way = view.axis.time_from_pixel(float(point.x)) - m_press_time;
    const float offset = m_snap.offset(m_edge, way, point.modifiers);
    if (m_stretches) {
        const float edge = std::clamp(m_edge + offset, 0.f, std::max(view.bar()->get_total_length(), m_edge));
        m_items.stretch(m_anchor, std::max((edge - m_anchor) / (m_edge - m_anchor), 0.f));
    } else {
        m_items.move(m_items.limited(offset));
    }
    tell_first_keys(m_host, m_items);
}

void SpanDrag::finish(const TimelinePoint& point)
{
    move(point);
    if (m_is_off) {
        m_items.restore();
        delete_selected(m_host, selected_kinds(m_host.timeline().selection));
    } else if (m_items.is_refused()) {
        m_items.restore();
        tell_script_is_there(m_host);
    } else {
        m_items.keep();
    }
}

} // namespace tarn
