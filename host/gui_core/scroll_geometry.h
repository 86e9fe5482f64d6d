#pragma once

#include <QRectF>

namespace tarn {

/// A thumb on a track: where it is for a position, and which position a place stands for. Lengths are pixels along the
/// track; `seen` of `total` units are visible at once.
struct ScrollGeometry {
    double track = 0;
    double total = 0;
    double seen = 0;

    static constexpr double smallest_thumb = 16;

    bool can_scroll() const { return total > seen && track > 0; }
    double thumb() const;
    /// The thumb's place for a position from 0 to total - seen.
    double place_of(double position) const;
    /// The position at which the thumb begins at `place`, held to its range.
    double position_at(double place) const;
};

} // namespace tarn
