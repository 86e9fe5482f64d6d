#include "timeline_row_keys.h"

#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "engine/base_world.h"
#include "timeline_host.h"

#include <algorithm>

namespace tarn {

namespace {

bool is_locked(const TimelineView& view, const CTVar& variable)
{
    return view.rows.locked.contains(variable.object()->id());
}

void take(KeySelection& keys, const TimelineView& view, CTVar* variable, float from, float to)
{
    if (is_locked(view, *variable))
        return;
    std::vector<float> times;
    variable->keys().each_time(from, to, [&](qsizetype, float time) { times.push_back(time); });
    if (!times.empty())
        keys[variable] = std::move(times);
}

} // namespace

KeySelection keys_at(const TimelineView& view, const TimelineRow& row, float time)
{
    KeySelection keys;
    for (CTVar* variable : row.variables(*view.bar()))
        take(keys, view, variable, time, time);
    return keys;
}

KeySelection keys_between(const TimelineView& view, int top, int bottom, float from, float to)
{
    KeySelection keys;
    for (const TimelineRow& row : rows_between(view, top, bottom + 1))
        for (CTVar* variable : row.variables(*view.bar()))
            take(keys, view, variable, from, to);
    return keys;
}

KeySelection all_keys(const TimelineView& view, float from, float to)
{
    KeySelection keys;
    for (const TimelineRow& row : timeline_rows(view))
        if (row.object && !row.variable)
            for (CTVar* variable : row.object->variables())
                take(keys, view, variable, from, to);
    return keys;
}

bool holds_all(const TimelineSelection& selection, const KeySelection& keys)
{
    return std::all_of(keys.begin(), keys.end(), [&](const auto& entry) {
        return std::all_of(entry.second.begin(), entry.second.end(),
                           [&](float time) { return selection.has_key(entry.first, time); });
    });
}

void combine(TimelineSelection& selection, const KeySelection& keys, Qt::KeyboardModifiers modifiers)
{
    if (!(modifiers & (Qt::ShiftModifier | Qt::ControlModifier))) {
        selection.clear();
        selection.set_keys(keys);
        return;
    }
    const bool toggles = modifiers.testFlag(Qt::ControlModifier);
    KeySelection combined = selection.keys();
    for (const auto& [variable, times] : keys) {
        std::vector<float>& present = combined[variable];
        std::vector<float> result;
        if (toggles)
            std::set_symmetric_difference(present.begin(), present.end(), times.begin(), times.end(),
                                          std::back_inserter(result));
        else
            std::set_union(present.begin(), present.end(), times.begin(), times.end(), std::back_inserter(result));
        present = std::move(result);
    }
    selection.set_keys(std::move(combined));
}

std::optional<TimelineRow> focused_row(const TimelineView& view)
{
    const std::vector<TimelineRow> rows = timeline_rows(view);
    if (rows.empty())
        return {};
    const auto is_focused = [&](const TimelineRow& row) {
        return (row.object ? row.object->id() : 0) == view.rows.focus_object
            && (row.variable ? row.variable->id() : 0) == view.rows.focus_variable;
    };
    const auto found = std::find_if(rows.begin(), rows.end(), is_focused);
    return found == rows.end() ? rows.front() : *found;
}

void focus_row(TimelineView& view, const TimelineRow& row)
{
    view.rows.focus_object = row.object ? row.object->id() : 0;
    view.rows.focus_variable = row.variable ? row.variable->id() : 0;
}

void make_current(TimelineHost& host, const TimelineRow& row)
{
    CTimebar* bar = host.timeline().bar();
    bar->set_current_object(row.object);
    if (row.object)
        row.object->set_current_variable(row.variable);
    if (host.world())
        host.world()->broadcast(ui_timebar_content);
}

} // namespace tarn
