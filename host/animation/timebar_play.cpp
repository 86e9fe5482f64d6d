// The time of a timebar, and how it goes on.

#include "animation_scene.h"
#include "timebar.h"
#include "timer_object.h"

#include <algorithm>
#include <cmath>

using namespace tarn;

namespace {

constexpr float slowest = 1.f / 8;
constexpr float fastest = 8;

bool is_reverse(PlayMode mode)
{
    return mode == PlayMode::ReverseOnce || mode == PlayMode::ReverseRepeat;
}

} // namespace

void CTimebar::set_speed(float speed)
{
    m_speed = speed > slowest ? std::min(speed, fastest) : slowest;
}

void CTimebar::set_current_time(float time, int apply)
{
    m_current_time = time > 0 ? std::min(time, get_total_length()) : 0;
    m_includes_begin = true;
    if (!apply)
        return;
    m_scene.drop_unrecorded();
    m_scene.show_bar(*this);
}

void CTimebar::active_bar(int on, int from_start)
{
    m_playing = on != 0;
    m_scene.content_changed();
    if (!m_playing)
        return;
    m_direction = is_reverse(play_mode()) ? -1 : 1;
    const float begin = m_direction > 0 ? 0 : get_total_length();
    const float end = get_total_length() - begin;
    if (from_start || m_current_time == end)
        m_current_time = begin;
    m_includes_begin = true;
    for (CTimerObject* object : objects())
        if (auto* command = dynamic_cast<CTCommandScript*>(object))
            command->forget_run();
    m_scene.drop_unrecorded();
}

void CTimebar::frame_move(float elapsed)
{
    if (!m_playing)
        return;
    m_scene.prepare();
    advance(elapsed);
    m_scene.show_frame();
    m_scene.tell_passed(*this);
}

/// Notes the script keys from one time to another, the other included; the first one where it was not passed yet.
void CTimebar::pass(float from, float to)
{
    const bool with_begin = std::exchange(m_includes_begin, false);
    const auto is_passed = [&](float time) {
        return time == from ? with_begin : from < to ? time > from && time <= to : time < from && time >= to;
    };
    const auto& keys = script_keys();
    const auto low = std::lower_bound(keys.begin(), keys.end(), std::min(from, to),
                                      [](const CScriptKey* key, float time) { return key->time() < time; });
    const auto high = std::upper_bound(low, keys.end(), std::max(from, to),
                                       [](float time, const CScriptKey* key) { return time < key->time(); });
    const auto note = [&](const CScriptKey* key) {
        if (is_passed(key->time()))
            m_passed.push_back(key->id());
    };
    if (from <= to)
        std::for_each(low, high, note);
    else
        std::for_each(std::make_reverse_iterator(high), std::make_reverse_iterator(low), note);
}

/// What is played of the bar.
struct CTimebar::Part {
    float begin;
    float end;
    bool loops; ///< whatever the play mode says of the ends
};

CTimebar::Part CTimebar::played_part() const
{
    if (m_scene.is_running() || !has_loop())
        return {0, get_total_length(), false};
    return {loop_from(), loop_to(), true};
}

/// What happens at the end that the time has come to; false when it goes no further.
bool CTimebar::at_edge(const Part& part)
{
    switch (play_mode()) {
    case PlayMode::Normal:
    case PlayMode::ReverseOnce:
        if (!part.loops)
            return false;
        break;
    case PlayMode::Swing: m_direction = -m_direction; return true;
    case PlayMode::Repeat:
    case PlayMode::ReverseRepeat: break;
    }
    m_current_time = m_direction > 0 ? part.begin : part.end;
    m_includes_begin = true;
    return true;
}

void CTimebar::advance(float elapsed)
{
    const Part part = played_part();
    const float length = part.end - part.begin;
    if (m_current_time < part.begin || m_current_time > part.end) {
        m_current_time = m_direction > 0 ? part.begin : part.end;
        m_includes_begin = true;
    }
    double left = std::isfinite(elapsed) ? std::max(double(elapsed) * double(m_speed), 0.0) : 0.0;
    // However long a frame took, the bar goes through at most some times.
    const double period = 2 * double(length);
    if (length > 0 && left > 2 * period)
        left = period + std::fmod(left, period);
    const bool ends = !part.loops && (play_mode() == PlayMode::Normal || play_mode() == PlayMode::ReverseOnce);
    while (true) {
        const float edge = m_direction > 0 ? part.end : part.begin;
        const double way = std::abs(double(edge) - double(m_current_time));
        if (left < way || (left == way && !ends && length > 0)) {
            const auto time = float(double(m_current_time) + m_direction * left);
            pass(m_current_time, time);
            m_current_time = time;
            return;
        }
        pass(m_current_time, edge);
        m_current_time = edge;
        left -= way;
        if (length <= 0 || !at_edge(part)) {
            m_playing = false;
            m_ended = true;
            return;
        }
    }
}
