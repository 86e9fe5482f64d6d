#pragma once

#include "timeline_rows.h"

#include <Qt>

namespace tarn {

class TimelineHost;

// Which keys rows offer to be selected: of objects that are not locked.

KeySelection keys_at(const TimelineView& view, const TimelineRow& row, float time);
/// Of all rows that can be seen by scrolling, or of those between two heights.
KeySelection keys_between(const TimelineView& view, int top, int bottom, float from, float to);
KeySelection all_keys(const TimelineView& view, float from, float to);
bool holds_all(const TimelineSelection& selection, const KeySelection& keys);
/// With Shift the keys are added, with Ctrl each is added or taken out; otherwise they are the selection.
void combine(TimelineSelection& selection, const KeySelection& keys, Qt::KeyboardModifiers modifiers);

/// The row that the keyboard is in; none without a timebar.
std::optional<TimelineRow> focused_row(const TimelineView& view);
void focus_row(TimelineView& view, const TimelineRow& row);
/// The row's object and variable become the timebar's current ones, and pages show them.
void make_current(TimelineHost& host, const TimelineRow& row);

} // namespace tarn
