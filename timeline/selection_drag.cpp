#include "selection_drag.h"

#include "animation/t_var.h"
#include "core/language.h"
#include "timeline_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarn {

namespace {

constexpr double unseen_part = 0.02; // of a frame, by which floats are off

/// The keys from the first of each variable that can be moved on.
KeySelection with_later_keys(const KeySelection& keys)
{
    KeySelection all;
    for (const auto& [variable, times] : keys) {
        const float first = variable->keys().first_time();
        const auto moving = std::upper_bound(times.begin(), times.end(), first);
        if (moving != times.end())
            variable->keys().each_time(*moving, max_time,
                                       [&](qsizetype, float time) { all[variable].push_back(time); });
    }
    return all;
}

/// What stands on a frame and moves by whole frames comes to stand on one exactly.
std::optional<float> moved_by_frames(float time, float offset, int frame_rate)
{
    const qint64 frame = frame_of(time, frame_rate);
    const double way = double(offset) * std::max(frame_rate, 1);
    if (time != frame_time(frame, frame_rate) || std::abs(way - std::round(way)) > unseen_part)
        return {};
    return frame_time(frame + std::llround(way), frame_rate);
}

} // namespace

SelectionDrag::SelectionDrag(TimelineView& view, Items items)
    : m_view(view), m_before(view.selection), m_takes_scripts(items != Items::Keys)
{
    if (items != Items::Scripts)
        m_moving = m_before.keys();
}

void SelectionDrag::set_ripple(bool on)
{
    if (std::exchange(m_ripple, on) == on || m_before.keys().empty())
        return;
    if (m_keys)
        m_keys->move(0);
    m_moving = on ? with_later_keys(m_before.keys()) : m_before.keys();
    if (m_keys)
        m_keys.emplace(m_moving);
}

SelectionDrag::~SelectionDrag()
{
    restore();
}

float SelectionDrag::limited(float offset) const
{
    float low = -max_time;
    float latest = 0;
    for (const auto& [variable, times] : m_moving) {
        const float first = variable->keys().first_time();
        const auto moving = std::upper_bound(times.begin(), times.end(), first);
        if (moving == times.end())
            continue;
        low = std::max(low, just_behind(first) - *moving);
        latest = std::max(latest, times.back());
    }
    if (m_takes_scripts && !m_before.scripts().empty()) {
        low = std::max(low, -m_before.scripts().front());
        latest = std::max(latest, m_before.scripts().back());
    }
    const CTimebar* bar = m_view.bar();
    const float high = bar ? std::max(bar->get_total_length() - latest, 0.f) : 0;
    return std::clamp(offset, std::min(low, high), high);
}

void SelectionDrag::move(float offset)
{
    const CTimebar* bar = m_view.bar();
    const int rate = bar ? bar->frame_rate() : 0;
    retime([=](float time) { return moved_by_frames(time, offset, rate).value_or(time + offset); });
}

void SelectionDrag::stretch(float anchor, float factor)
{
    retime([=](float time) { return anchor + (time - anchor) * factor; });
}

void SelectionDrag::retime(const std::function<float(float)>& moved)
{
    CTimebar* bar = m_view.bar();
    if (!bar)
        return;
    if (!m_action) {
        m_journal = &bar->journal();
        m_action.emplace(*m_journal, lang(u"移动关键帧", u"Move Keys"));
        if (!m_moving.empty())
            m_keys.emplace(m_moving);
        if (m_takes_scripts)
            m_scripts = m_before.scripts();
    }
    if (m_takes_scripts) {
        // From where they are now to where they are to be from where they were: both lists ascend alike.
        const std::vector<float> now = m_scripts;
        m_refused = !bar->retime_script_keys(m_scripts, [&](float time) {
            const auto index = std::lower_bound(now.begin(), now.end(), time) - now.begin();
            return moved(m_before.scripts()[std::size_t(index)]);
        });
        m_view.selection.set_scripts(m_scripts);
    }
    if (m_keys) {
        m_keys->retime(moved);
        m_view.selection.set_keys(m_keys->keys());
    }
}

bool SelectionDrag::holds_first_keys() const
{
    return std::any_of(m_moving.begin(), m_moving.end(), [](const auto& entry) {
        const auto& [variable, times] = entry;
        return !variable->keys().is_empty() && times.front() <= variable->keys().first_time();
    });
}

void SelectionDrag::restore()
{
    if (!m_action)
        return;
    m_journal->cancel();
    m_action.reset();
    m_keys.reset();
    m_view.selection = m_before;
    m_refused = false;
}

void SelectionDrag::keep()
{
    const bool keys_moved = m_keys && m_keys->keys() != m_moving;
    const bool scripts_moved = m_takes_scripts && m_scripts != m_before.scripts();
    if (keys_moved || scripts_moved)
        m_action.reset();
    else
        restore();
}

} // namespace tarn
