#include "key_drag.h"

#include "t_var.h"

#include <algorithm>

namespace tarn {

KeyDrag::KeyDrag(KeySelection keys) : m_now(std::move(keys))
{
    for (const auto& [variable, times] : m_now) {
        Variable& row = m_variables.emplace_back(Variable{variable, variable->keys(), {}, false});
        for (const float time : times) {
            const qsizetype key = row.before.find(time);
            if (key > 0)
                row.moving.push_back(key);
            row.takes_first |= key == 0;
        }
    }
}

bool KeyDrag::retime(const Variable& row, const std::function<float(float)>& moved)
{
    if (row.moving.empty())
        return false;
    std::vector<Key> keys;
    keys.reserve(row.moving.size());
    const float first = row.before.first_time();
    for (const qsizetype index : row.moving) {
        Key& key = keys.emplace_back(row.before.key(index));
        key.time = moved(key.time);
    }
    std::stable_sort(keys.begin(), keys.end(), [](const Key& a, const Key& b) { return a.time < b.time; });
    std::vector<float> times{first};
    times.reserve(keys.size() + 1);
    for (const Key& key : keys)
        times.push_back(std::clamp(key.time, first, max_time));
    keep_apart(times);
    for (std::size_t i = 0; i < keys.size(); ++i)
        keys[i].time = times[i + 1];
    KeyTrack track = row.before;
    track.edit(row.moving, keys);
    if (!row.takes_first)
        times.erase(times.begin());
    m_now[row.variable] = std::move(times);
    return row.variable->set_keys(std::move(track));
}

bool KeyDrag::retime(const std::function<float(float)>& moved)
{
    bool changed = false;
    for (const Variable& row : m_variables)
        changed |= retime(row, moved);
    return changed;
}

bool KeyDrag::move(float offset)
{
    return retime([offset](float time) { return time + offset; });
}

bool KeyDrag::stretch(float anchor, float factor)
{
    return retime([=](float time) { return anchor + (time - anchor) * factor; });
}

} // namespace tarn
