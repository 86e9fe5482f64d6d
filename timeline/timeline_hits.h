#pragma once

#include "timeline_view.h"

namespace tarn {

/// What is under the mouse in the bands. Of marks that lie so close that several are, the last in time, or of markers the
/// last in their list.
TimelineHover find_hover(const TimelineView& view, int x, int y);
/// Those whose ticks are there.
std::vector<TimeFault> faults_at(const TimelineView& view, int x, int y);
/// Whether a press there takes what is selected as a whole.
bool hits_span(const TimelineView& view, int x, int y);
/// Whether a press there takes the timebar's end.
bool hits_end(const TimelineView& view, int x, int y);

} // namespace tarn
