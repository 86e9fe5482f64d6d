#include "ruler_scale.h"

#include <cmath>

namespace tarn {

namespace {

constexpr double least_gap = 60; ///< pixels of the view between two numbers
constexpr int ticks_a_number = 10;

/// 10, 20, 50, 100 ... : the first that is at least `least`.
int round_step(double least)
{
    int power = 10;
    while (power * 5 < least)
        power *= 10;
    for (const int factor : {1, 2})
        if (power * factor >= least)
            return power * factor;
    return power * 5;
}

} // namespace

std::vector<RulerTick> ruler_ticks(const RulerScale& scale, double begin, double end, double pixel)
{
    const int step = round_step(least_gap * pixel / scale.unit) / ticks_a_number;
    std::vector<RulerTick> ticks;
    const int last = int(std::floor(scale.number_at(end) / step));
    for (int i = int(std::ceil(scale.number_at(begin) / step)); i <= last; ++i) {
        const auto kind = i % ticks_a_number == 0 ? RulerTick::Numbered
            : i % (ticks_a_number / 2) == 0       ? RulerTick::Middle
                                                  : RulerTick::Small;
        ticks.push_back({scale.place_of(i * step), i * step, kind});
    }
    return ticks;
}

} // namespace tarn
