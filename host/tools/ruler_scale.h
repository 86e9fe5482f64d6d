#pragma once

#include <vector>

namespace tarn {

/// How one axis of the screen is counted: from where, in pixels of the screen, and how many of those make one.
struct RulerScale {
    double origin = 0;
    double unit = 1;

    double number_at(double place) const { return (place - origin) / unit; }
    double place_of(double number) const { return origin + number * unit; }
    bool operator==(const RulerScale&) const = default;
};

struct RulerTick {
    enum Kind { Small, Middle, Numbered };

    double place; ///< pixels of the screen
    int number;
    Kind kind;
};

/// The ticks between the places `begin` and `end`, ten to a number, so that numbers stand well apart in a view in which
/// `pixel` pixels of the screen make one.
std::vector<RulerTick> ruler_ticks(const RulerScale& scale, double begin, double end, double pixel);

} // namespace tarn
