#include "timeline_commands.h"

#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "selection_drag.h"
#include "timeline_edits.h"
#include "timeline_host.h"
#include "timeline_menu.h"
#include "timeline_row_keys.h"

#include <algorithm>

namespace tarn {

// Selecting ----------------------------------------------------------------------------------------------------------

namespace {

void select_between(TimelineHost& host, float from, float to)
{
    TimelineView& view = host.timeline();
    if (!view.bar())
        return;
    std::vector<float> scripts = view.bar()->script_key_times();
    std::erase_if(scripts, [=](float time) { return time < from || time > to; });
    view.selection.set_keys(all_keys(view, from, to));
    view.selection.set_scripts(std::move(scripts));
}

} // namespace

void select_all(TimelineHost& host)
{
    select_between(host, 0, max_time);
}

void invert_selection(TimelineHost& host)
{
    TimelineView& view = host.timeline();
    if (!view.bar())
        return;
    std::vector<float> scripts = view.bar()->script_key_times();
    std::erase_if(scripts, [&](float time) { return view.selection.has_script(time); });
    combine(view.selection, all_keys(view, 0, max_time), Qt::ControlModifier);
    view.selection.set_scripts(std::move(scripts));
}

void select_before_cursor(TimelineHost& host)
{
    select_between(host, 0, std::nextafter(host.timeline().current_time, -1.f));
}

void select_after_cursor(TimelineHost& host)
{
    select_between(host, just_behind(host.timeline().current_time), max_time);
}

// Moving -------------------------------------------------------------------------------------------------------------

void step_frames(TimelineHost& host, int frames)
{
    const TimelineView& view = host.timeline();
    const int rate = view.bar() ? view.bar()->frame_rate() : TimebarState().frame_rate;
    qint64 frame = frame_of(view.current_time, rate);
    if (frames < 0 && view.current_time > frame_time(frame, rate))
        ++frame;
    const float time = frame_time(std::max(frame + frames, qint64(0)), rate);
    host.set_current_time(time);
    host.show_time(view.current_time);
}

namespace {

/// Moves what is selected; false when it cannot go that far.
bool move_selected(TimelineHost& host, float offset)
{
    TimelineView& view = host.timeline();
    view.selection.refresh(view.bar());
    if (view.selection.is_empty() || offset == 0)
        return true;
    SelectionDrag items(view, SelectionDrag::Items::All);
    items.set_ripple(view.ripple);
    items.move(items.limited(offset));
    if (items.is_refused()) {
        items.restore();
        tell_script_is_there(host);
        return false;
    }
    items.keep();
    if (items.holds_first_keys())
        host.say(lang(u"变量的第一个关键帧保持不动", u"The first keys of variables stay where they are"));
    return true;
}

/// The first and the last time of what is selected and can be moved; none when nothing can.
std::optional<std::pair<float, float>> movable_span(const TimelineSelection& selection)
{
    std::optional<std::pair<float, float>> span;
    const auto take = [&](float time) {
        span = span ? std::pair(std::min(span->first, time), std::max(span->second, time)) : std::pair(time, time);
    };
    for (const auto& [variable, times] : selection.keys()) {
        const auto moving = std::upper_bound(times.begin(), times.end(), variable->keys().first_time());
        if (moving == times.end())
            continue;
        take(*moving);
        take(times.back());
    }
    for (const float time : selection.scripts())
        take(time);
    return span;
}

} // namespace

void nudge_selected(TimelineHost& host, int frames)
{
    if (const CTimebar* bar = host.timeline().bar())
        move_selected(host, float(frames) / float(std::max(bar->frame_rate(), 1)));
}

void move_first_to(TimelineHost& host, float time)
{
    if (const auto span = movable_span(host.timeline().selection))
        move_selected(host, time - span->first);
    else if (!host.timeline().selection.is_empty())
        tell_first_not_moved(host);
}

void move_last_to(TimelineHost& host, float time)
{
    if (const auto span = movable_span(host.timeline().selection))
        move_selected(host, time - span->second);
    else if (!host.timeline().selection.is_empty())
        tell_first_not_moved(host);
}

void mirror_selected(TimelineHost& host)
{
    TimelineView& view = host.timeline();
    const auto span = movable_span(view.selection);
    if (!span)
        return;
    const float sum = span->first + span->second;
    SelectionDrag items(view, SelectionDrag::Items::All);
    items.retime([=](float time) { return sum - time; });
    if (items.is_refused()) {
        items.restore();
        tell_script_is_there(host);
        return;
    }
    items.keep();
}

// Exact values -------------------------------------------------------------------------------------------------------

void ease_selected(TimelineHost& host, float ease)
{
    const TimelineView& view = host.timeline();
    if (view.bar())
        view.bar()->set_keys_ease(view.selection.keys(), ease);
}

void ask_time_of_selected(TimelineHost& host)
{
    const auto span = movable_span(host.timeline().selection);
    if (!span) {
        move_first_to(host, 0);
        return;
    }
    if (const auto time = ask_time(host, span->first))
        move_first_to(host, *time);
}

void ask_value_of_selected(TimelineHost& host)
{
    const TimelineView& view = host.timeline();
    if (view.selection.keys().empty())
        return;
    const auto& [first, times] = *view.selection.keys().begin();
    const auto text = ask_text(host, lang(u"请输入关键帧的变量值", u"Input key value."),
                               CTVar::get_string_from_var(first->value_at(times.front())));
    if (!text)
        return;
    const UserAction action(view.bar()->journal(), lang(u"关键帧的值", u"Key Value"));
    for (const auto& [variable, at] : KeySelection(view.selection.keys())) {
        KeyValue value(variable->type());
        if (!variable->get_var_from_string(*text, value))
            continue;
        variable->edit_keys({}, [&](KeyTrack& track) {
            for (const float time : at)
                if (const qsizetype key = track.find(time); key >= 0)
                    track.set_value(key, value);
        });
    }
}

void ask_ease_of_selected(TimelineHost& host)
{
    const TimelineView& view = host.timeline();
    if (view.selection.keys().empty())
        return;
    const auto& [first, times] = *view.selection.keys().begin();
    const auto ease = ask_ease_number(host, first->get_ease(times.front()));
    if (ease)
        ease_selected(host, *ease);
}

// Looking ------------------------------------------------------------------------------------------------------------

void fit_all(TimelineHost& host)
{
    TimelineView& view = host.timeline();
    if (!view.bar())
        return;
    view.axis.fit(0, view.bar()->get_total_length(), view.client_width);
    host.view_moved();
}

void fit_selected(TimelineHost& host)
{
    TimelineView& view = host.timeline();
    if (has_section(view))
        view.axis.fit(view.range_begin(), view.range_end(), view.client_width);
    else if (!view.selection.is_empty())
        view.axis.fit(view.selection.section_start(), view.selection.section_end(), view.client_width);
    host.view_moved();
}

// Rows ---------------------------------------------------------------------------------------------------------------

void edit_row_key(TimelineHost& host, const TimelineRow& row, float time)
{
    const TimelineView& view = host.timeline();
    const QString prompt = lang(u"请输入关键帧的变量值", u"Input a key value");
    if (!view.bar() || (row.object && view.rows.locked.contains(row.object->id())))
        return;
    if (row.variable) {
        ask_key_value(host, *row.variable, time, prompt);
        return;
    }
    const KeySelection keys = keys_at(view, row, time);
    if (!keys.empty() && row.object && open_key_dialog(host, *row.object, time))
        return;
    for (CTVar* variable : row.variables(*view.bar()))
        if (keys.contains(variable)) {
            ask_key_value(host, *variable, time, prompt);
            return;
        }
}

void toggle_fold(TimelineView& view, const TimelineRow& row)
{
    if (row.object && !view.rows.open.erase(row.object->id()))
        view.rows.open.insert(row.object->id());
}

} // namespace tarn
