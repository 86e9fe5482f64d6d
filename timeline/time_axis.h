#pragma once

#include <QString>

class CTimebar;

namespace tarn {

/// Which time stands at which pixel column of the timeline. Times are seconds.
struct TimeAxis {
    static constexpr float least_scale = 0.005f;
    static constexpr float greatest_scale = 1;

    float view_origin = 0;            ///< at the left edge
    float seconds_per_pixel = 0.025f; ///< within the two scales

    /// Never below 0.
    float time_from_pixel(float x) const;
    /// Off screen where the time is not visible.
    float pixel_from_time(float time) const { return (time - view_origin) / seconds_per_pixel; }
    float seconds(float pixels) const { return pixels * seconds_per_pixel; }

    void double_scale();
    void halve_scale();
    /// Halves or doubles the scale; what stands at `time` stays in its column. The begin of the axis can come to stand
    /// right of the left edge when zooming in.
    void zoom_in(float time);
    void zoom_out(float time);
    /// Shows the times from `begin` to `end` with a margin, as far as the scales allow.
    void fit(float begin, float end, int width);
    /// Scrolls by as little as shows the time, `margin` pixels off the edges.
    void show(float time, int width, int margin = 30);

    bool operator==(const TimeAxis&) const = default;

private:
    void keep_column(float time, int column);
};

/// A time as the timeline writes it: "12.50s", "1:15", "1:1:40", or the frame's number where the timebar shows frames. Null
/// is no timebar.
QString time_label(float time, const CTimebar* bar);

} // namespace tarn
