#include "scroll_geometry.h"

#include <algorithm>

namespace tarn {

double ScrollGeometry::thumb() const
{
    if (!can_scroll())
        return track;
    return std::clamp(track * seen / total, std::min(smallest_thumb, track), track);
}

double ScrollGeometry::place_of(double position) const
{
    if (!can_scroll())
        return 0;
    return std::clamp(position / (total - seen), 0.0, 1.0) * (track - thumb());
}

double ScrollGeometry::position_at(double place) const
{
    const double way = track - thumb();
    if (!can_scroll() || way <= 0)
        return 0;
    return std::clamp(place / way, 0.0, 1.0) * (total - seen);
}

} // namespace tarn
