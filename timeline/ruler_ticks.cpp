#include "ruler_ticks.h"

#include "animation/anim_time.h"
#include "band_geometry.h"

#include <cmath>

namespace tarn {

namespace {

constexpr double least_label_distance = 72; // pixels
constexpr double least_tick_distance = 7;

/// Distances of ticks that read well, ascending, in units of the ruler.
std::vector<qint64> steps_of(qint64 units_per_second, bool in_frames)
{
    std::vector<qint64> steps;
    if (in_frames) {
        for (const qint64 step : {1, 2, 5, 10})
            if (step < units_per_second)
                steps.push_back(step);
    } else {
        steps = {10, 20, 50, 100, 200, 500};
    }
    for (const qint64 seconds : {1, 2, 5, 10, 30, 60, 120, 300, 600, 1800, 3600, 7200, 36000})
        steps.push_back(seconds * units_per_second);
    return steps;
}

} // namespace

std::vector<RulerTick> ruler_ticks(const TimelineView& view)
{
    const CTimebar* bar = view.bar();
    const bool in_frames = bar && bar->shows_frames();
    const int rate = in_frames ? std::max(bar->frame_rate(), 1) : 0;
    const qint64 per_second = in_frames ? rate : 1000;
    const std::vector<qint64> steps = steps_of(per_second, in_frames);
    const double pixels_per_unit = 1 / (double(view.axis.seconds_per_pixel) * double(per_second));
    const auto fits = [&](double distance) {
        return [=](qint64 step) { return double(step) * pixels_per_unit >= distance; };
    };
    const auto major_step = std::find_if(steps.begin(), steps.end(), fits(least_label_distance));
    const qint64 major = major_step == steps.end() ? steps.back() : *major_step;
    const auto minor_step = std::find_if(
        steps.begin(), steps.end(), [&](qint64 step) { return major % step == 0 && fits(least_tick_distance)(step); });
    const qint64 minor = minor_step == steps.end() ? major : *minor_step;

    std::vector<RulerTick> ticks;
    const double begin = std::max(double(view.axis.view_origin), 0.) * double(per_second);
    for (qint64 tick = qint64(std::ceil(begin / double(minor))) * minor;; tick += minor) {
        const float time = in_frames ? frame_time(tick, rate) : float(double(tick) / double(per_second));
        const int column = column_of(view.axis, time);
        if (column > view.client_width || time > max_time)
            return ticks;
        ticks.push_back({time, column, tick % major == 0});
    }
}

} // namespace tarn
