#include "timeline_selection.h"

#include "animation/t_var.h"
#include "animation/timer_object.h"

#include <algorithm>

namespace tarn {

namespace {

bool contains(const std::vector<float>& times, float time)
{
    return std::binary_search(times.begin(), times.end(), time);
}

void insert(std::vector<float>& times, float time)
{
    const auto place = std::lower_bound(times.begin(), times.end(), time);
    if (place == times.end() || *place != time)
        times.insert(place, time);
}

void erase(std::vector<float>& times, float time)
{
    const auto place = std::lower_bound(times.begin(), times.end(), time);
    if (place != times.end() && *place == time)
        times.erase(place);
}

} // namespace

std::size_t TimelineSelection::key_count() const
{
    std::size_t count = 0;
    for (const auto& [variable, times] : m_keys)
        count += times.size();
    return count;
}

void TimelineSelection::clear()
{
    m_keys.clear();
    m_scripts.clear();
    measure();
}

void TimelineSelection::set_keys(KeySelection keys)
{
    m_keys = std::move(keys);
    std::erase_if(m_keys, [](const auto& entry) { return entry.second.empty(); });
    measure();
}

void TimelineSelection::set_scripts(std::vector<float> times)
{
    m_scripts = std::move(times);
    std::sort(m_scripts.begin(), m_scripts.end());
    measure();
}

bool TimelineSelection::has_key(const CTVar* variable, float time) const
{
    const auto found = m_keys.find(const_cast<CTVar*>(variable));
    return found != m_keys.end() && contains(found->second, time);
}

bool TimelineSelection::has_key_at(float time) const
{
    return std::any_of(m_keys.begin(), m_keys.end(), [&](const auto& entry) { return contains(entry.second, time); });
}

bool TimelineSelection::has_script(float time) const
{
    return contains(m_scripts, time);
}

void TimelineSelection::add_key(CTVar* variable, float time)
{
    insert(m_keys[variable], time);
    measure();
}

void TimelineSelection::remove_key(CTVar* variable, float time)
{
    const auto found = m_keys.find(variable);
    if (found == m_keys.end())
        return;
    erase(found->second, time);
    if (found->second.empty())
        m_keys.erase(found);
    measure();
}

void TimelineSelection::add_script(float time)
{
    insert(m_scripts, time);
    measure();
}

void TimelineSelection::remove_script(float time)
{
    erase(m_scripts, time);
    measure();
}

void TimelineSelection::refresh(const CTimebar* bar)
{
    if (!bar) {
        clear();
        return;
    }
    KeySelection kept;
    for (const CTimerObject* object : bar->objects())
        for (CTVar* variable : object->variables())
            if (const auto found = m_keys.find(variable); found != m_keys.end())
                for (const float time : found->second)
                    if (variable->keys().find(time) >= 0)
                        kept[variable].push_back(time);
    m_keys = std::move(kept);
    std::erase_if(m_scripts, [&](float time) { return !bar->is_script_key_time(time); });
    measure();
}

void TimelineSelection::measure()
{
    m_start = 99999;
    m_end = 0;
    const auto take = [this](const std::vector<float>& times) {
        if (times.empty())
            return;
        m_start = std::min(m_start, times.front());
        m_end = std::max(m_end, times.back());
    };
    for (const auto& [variable, times] : m_keys)
        take(times);
    take(m_scripts);
}

} // namespace tarn
