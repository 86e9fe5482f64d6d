#include "key_rows.h"

#include "animation/anim_time.h"
#include "animation/t_var.h"
#include "timer_object_text.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <queue>
#include <tuple>

namespace tarn {

namespace {

constexpr qsizetype block_size = 128;

/// What a value sorts by.
double number_of(const KeyValue& value)
{
    switch (value.type()) {
    case VarType::Int: return value.as_int();
    case VarType::Color: return value.as_color();
    default: return double(value.part(0));
    }
}

} // namespace

float KeyPlace::time() const
{
    return variable->keys().time(key);
}

void KeyRows::set(std::vector<CTVar*> variables, KeyColumn order, bool descending)
{
    m_variables = std::move(variables);
    m_order = order;
    m_descending = descending;
    m_block_begin = -1;
    m_sorted.clear();
    if (order == KeyColumn::Object || order == KeyColumn::Variable)
        std::stable_sort(m_variables.begin(), m_variables.end(), [&](const CTVar* a, const CTVar* b) {
            const auto text = [&](const CTVar* variable) {
                return order == KeyColumn::Object ? target_text(*variable->object()) : variable_text(*variable);
            };
            return text(a).localeAwareCompare(text(b)) < 0;
        });
    m_begins.clear();
    m_size = 0;
    for (const CTVar* variable : m_variables) {
        m_begins.push_back(m_size);
        m_size += variable->keys().size();
    }
    if (order == KeyColumn::Content || order == KeyColumn::Ease)
        sort_keys();
}

void KeyRows::sort_keys()
{
    struct Keyed {
        double number;
        KeyPlace place;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(std::size_t(m_size));
    for (CTVar* variable : m_variables) {
        const KeyTrack& keys = variable->keys();
        for (qsizetype key = 0; key < keys.size(); ++key)
            keyed.push_back(
                {m_order == KeyColumn::Ease ? double(keys.ease(key)) : number_of(keys.value(key)), {variable, key}});
    }
    std::stable_sort(keyed.begin(), keyed.end(), [](const Keyed& a, const Keyed& b) { return a.number < b.number; });
    m_sorted.reserve(keyed.size());
    for (const Keyed& entry : keyed)
        m_sorted.push_back(entry.place);
}

KeyPlace KeyRows::at(qsizetype row) const
{
    const KeyPlace place = in_ascending(m_descending ? m_size - 1 - row : row);
    return place.variable && place.key < place.variable->keys().size() ? place : KeyPlace();
}

KeyPlace KeyRows::in_ascending(qsizetype row) const
{
    if (!m_sorted.empty())
        return m_sorted[std::size_t(row)];
    if (m_order != KeyColumn::Time) {
        const auto after = std::upper_bound(m_begins.begin(), m_begins.end(), row);
        const auto place = std::size_t(after - m_begins.begin() - 1);
        return {m_variables[place], row - m_begins[place]};
    }
    if (m_block_begin < 0 || row < m_block_begin || row >= m_block_begin + qsizetype(m_block.size()))
        find_block(row - row % block_size);
    const auto place = std::size_t(row - m_block_begin);
    return place < m_block.size() ? m_block[place] : KeyPlace();
}

qsizetype KeyRows::keys_before(float time) const
{
    qsizetype count = 0;
    for (const CTVar* variable : m_variables)
        count += variable->keys().first_from(time);
    return count;
}

qsizetype KeyRows::keys_until(float time) const
{
    return keys_before(std::nextafter(time, std::numeric_limits<float>::max()));
}

/// The rows from `first` on: first the time of that one, by halving, then all tracks are gone through side by side.
void KeyRows::find_block(qsizetype first) const
{
    // Floats that are not negative ascend with their bits.
    quint32 low = 0;
    auto high = std::bit_cast<quint32>(max_time);
    while (low < high) {
        const quint32 middle = low + (high - low) / 2;
        if (keys_until(std::bit_cast<float>(middle)) > first)
            high = middle;
        else
            low = middle + 1;
    }
    const auto begin = std::bit_cast<float>(low);

    using Next = std::tuple<float, std::size_t, qsizetype>; // time, variable, key
    std::priority_queue<Next, std::vector<Next>, std::greater<>> heads;
    const auto push = [&](std::size_t variable, qsizetype key) {
        const KeyTrack& keys = m_variables[variable]->keys();
        if (key < keys.size())
            heads.push({keys.time(key), variable, key});
    };
    for (std::size_t i = 0; i < m_variables.size(); ++i)
        push(i, m_variables[i]->keys().first_from(begin));
    m_block.clear();
    m_block_begin = first;
    for (qsizetype row = keys_before(begin); !heads.empty() && qsizetype(m_block.size()) < block_size; ++row) {
        const auto [time, variable, key] = heads.top();
        heads.pop();
        if (row >= first)
            m_block.push_back({m_variables[variable], key});
        push(variable, key + 1);
    }
}

qsizetype KeyRows::row_of(const CTVar* variable, float time) const
{
    const auto found = std::find(m_variables.begin(), m_variables.end(), variable);
    const qsizetype key = found == m_variables.end() ? -1 : variable->keys().find(time);
    if (key < 0)
        return -1;
    qsizetype row = 0;
    if (!m_sorted.empty()) {
        row = std::find(m_sorted.begin(), m_sorted.end(), KeyPlace{*found, key}) - m_sorted.begin();
    } else if (m_order != KeyColumn::Time) {
        row = m_begins[std::size_t(found - m_variables.begin())] + key;
    } else {
        row = keys_before(time);
        for (auto before = m_variables.begin(); before != found; ++before)
            row += (*before)->keys().find(time) >= 0 ? 1 : 0;
    }
    return m_descending ? m_size - 1 - row : row;
}

} // namespace tarn
