#pragma once

#include "timeline_rows.h"

namespace tarn {

/// What the timeline tells of what is under the mouse: times and values of keys, what a script key calls, which timebar wins
/// where two drive the same. Empty where there is nothing to tell.
QString timeline_tip(const TimelineView& view, int x, int y);
QString row_name_tip(const RowNameHit& hit);

} // namespace tarn
