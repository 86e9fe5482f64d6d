#include "timeline_keyboard.h"

#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "timeline_clipboard.h"
#include "timeline_commands.h"
#include "timeline_edits.h"
#include "timeline_host.h"
#include "timeline_row_keys.h"

#include <algorithm>
#include <optional>

namespace tarn {

namespace {

/// Scrolls the rows so that one can be seen.
void show_row(TimelineView& view, const TimelineRow& row)
{
    const int above = bands::rows_top - row.top;
    const int below = row.bottom() - view.client_height;
    view.rows.scroll = std::clamp(view.rows.scroll + (above > 0 ? -above : std::max(below, 0)), 0,
                                  std::max(greatest_scroll(view), 0));
}

void go_rows(TimelineHost& host, int way)
{
    TimelineView& view = host.timeline();
    const std::vector<TimelineRow> rows = timeline_rows(view);
    const auto focused = focused_row(view);
    if (!focused)
        return;
    const auto at = std::find(rows.begin(), rows.end(), *focused) - rows.begin();
    const auto to = std::clamp(at + way, std::ptrdiff_t(0), std::ptrdiff_t(rows.size()) - 1);
    focus_row(view, rows[std::size_t(to)]);
    show_row(view, rows[std::size_t(to)]);
}

/// The nearest key of the row on that side of the cursor.
std::optional<float> neighbour(const TimelineView& view, const TimelineRow& row, bool later)
{
    std::optional<float> nearest;
    for (const CTVar* variable : row.variables(*view.bar())) {
        const KeyTrack& keys = variable->keys();
        qsizetype key = keys.first_from(view.current_time);
        if (!later)
            --key;
        else if (key < keys.size() && keys.time(key) == view.current_time)
            ++key;
        if (key < 0 || key >= keys.size())
            continue;
        const float time = keys.time(key);
        nearest = !nearest ? time : later ? std::min(*nearest, time) : std::max(*nearest, time);
    }
    return nearest;
}

void go_keys(TimelineHost& host, bool later, Qt::KeyboardModifiers modifiers)
{
    TimelineView& view = host.timeline();
    const auto row = focused_row(view);
    const auto time = row ? neighbour(view, *row, later) : std::nullopt;
    if (!time)
        return;
    host.set_current_time(*time);
    host.show_time(*time);
    combine(view.selection, keys_at(view, *row, *time), modifiers);
}

void go_to(TimelineHost& host, float time)
{
    host.set_current_time(time);
    host.show_time(host.timeline().current_time);
}

void edit_focused(TimelineHost& host)
{
    TimelineView& view = host.timeline();
    const auto row = focused_row(view);
    if (!row)
        return;
    if (row->variable || !keys_at(view, *row, view.current_time).empty())
        edit_row_key(host, *row, view.current_time);
    else
        toggle_fold(view, *row);
}

struct KeyRow {
    int key;
    Qt::KeyboardModifiers modifiers;
    void (*run)(TimelineHost&);
};

const KeyRow rows[] = {
    {Qt::Key_Up, Qt::NoModifier, [](TimelineHost& host) { go_rows(host, -1); }},
    {Qt::Key_Down, Qt::NoModifier, [](TimelineHost& host) { go_rows(host, 1); }},
    {Qt::Key_Left, Qt::NoModifier, [](TimelineHost& host) { go_keys(host, false, Qt::NoModifier); }},
    {Qt::Key_Right, Qt::NoModifier, [](TimelineHost& host) { go_keys(host, true, Qt::NoModifier); }},
    {Qt::Key_Left, Qt::ShiftModifier, [](TimelineHost& host) { go_keys(host, false, Qt::ShiftModifier); }},
    {Qt::Key_Right, Qt::ShiftModifier, [](TimelineHost& host) { go_keys(host, true, Qt::ShiftModifier); }},
    {Qt::Key_Left, Qt::AltModifier, [](TimelineHost& host) { nudge_selected(host, -1); }},
    {Qt::Key_Right, Qt::AltModifier, [](TimelineHost& host) { nudge_selected(host, 1); }},
    {Qt::Key_Comma, Qt::NoModifier, [](TimelineHost& host) { step_frames(host, -1); }},
    {Qt::Key_Period, Qt::NoModifier, [](TimelineHost& host) { step_frames(host, 1); }},
    {Qt::Key_Home, Qt::NoModifier, [](TimelineHost& host) { go_to(host, 0); }},
    {Qt::Key_End, Qt::NoModifier, [](TimelineHost& host) { go_to(host, max_time); }},
    {Qt::Key_Return, Qt::NoModifier, edit_focused},
    {Qt::Key_Enter, Qt::NoModifier, edit_focused},
    {Qt::Key_Delete, Qt::NoModifier, [](TimelineHost& host) { delete_selected(host); }},
    {Qt::Key_Space, Qt::NoModifier, [](TimelineHost& host) { host.toggle_play(); }},
    {Qt::Key_A, Qt::ControlModifier, select_all},
    {Qt::Key_C, Qt::ControlModifier, copy_selected},
    {Qt::Key_X, Qt::ControlModifier, cut_selected},
    {Qt::Key_V, Qt::ControlModifier, paste_at_cursor},
    {Qt::Key_D, Qt::ControlModifier, duplicate_at_cursor},
    {Qt::Key_Escape, Qt::NoModifier, [](TimelineHost& host) { host.timeline().selection.clear(); }},
};

const KeyRow* row_of(int key, Qt::KeyboardModifiers modifiers)
{
    modifiers &= ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    const auto found = std::find_if(std::begin(rows), std::end(rows),
                                    [=](const KeyRow& row) { return row.key == key && row.modifiers == modifiers; });
    return found == std::end(rows) ? nullptr : found;
}

} // namespace

bool takes_key(int key, Qt::KeyboardModifiers modifiers)
{
    return row_of(key, modifiers) != nullptr;
}

bool press_key(TimelineHost& host, int key, Qt::KeyboardModifiers modifiers)
{
    const KeyRow* row = row_of(key, modifiers);
    TimelineView& view = host.timeline();
    if (!row || (!view.bar() && key != Qt::Key_Home))
        return row != nullptr;
    view.selection.refresh(view.bar());
    host.hold_time(false);
    row->run(host);
    host.redraw_all();
    return true;
}

} // namespace tarn
