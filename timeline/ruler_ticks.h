#pragma once

#include "timeline_view.h"

namespace tarn {

struct RulerTick {
    float time;
    int column;
    bool major; ///< with a label
};

/// The visible ticks of the ruler: at whole numbers of seconds, parts or multiples of them, or of frames where the timebar
/// shows those. Labels have room between major ones.
std::vector<RulerTick> ruler_ticks(const TimelineView& view);

} // namespace tarn
