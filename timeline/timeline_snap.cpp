#include "timeline_snap.h"

#include "animation/t_var.h"
#include "timeline_view.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr float reach = 4; ///< pixels

} // namespace

void TimelineSnap::find_times()
{
    m_found = true;
    const CTimebar& bar = *m_view.bar();
    m_times = {0, bar.get_total_length()};
    for (const CTimeMark* mark : bar.marks()) {
        m_times.push_back(mark->time());
        m_times.push_back(mark->end());
    }
    for (const float time : bar.script_key_times())
        if (!m_view.selection.has_script(time))
            m_times.push_back(time);
    const float begin = m_view.axis.time_from_pixel(0);
    const float end = m_view.axis.time_from_pixel(float(m_view.client_width));
    for (const CTVar* variable : bar.shown_variables())
        variable->keys().each_time(begin, end, [&](qsizetype, float time) {
            if (!m_view.selection.has_key(variable, time))
                m_times.push_back(time);
        });
    std::sort(m_times.begin(), m_times.end());
}

float TimelineSnap::operator()(float time, Qt::KeyboardModifiers modifiers)
{
    const CTimebar* bar = m_view.bar();
    if (!bar || bar->shows_frames() == modifiers.testFlag(Qt::AltModifier))
        return time;
    if (!m_found)
        find_times();
    // Nothing keeps what is moved from the frames beside it.
    const float half_frame = 0.5f / float(std::max(bar->frame_rate(), 1));
    return snap(time,
                {.frame_rate = std::max(bar->frame_rate(), 1),
                 .times = m_times,
                 .reach = std::min(m_view.axis.seconds(reach), half_frame)});
}

float TimelineSnap::offset(float time, float offset, Qt::KeyboardModifiers modifiers)
{
    return (*this)(time + offset, modifiers) - time;
}

} // namespace tarn
