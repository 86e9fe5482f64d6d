#pragma once

#include "band_geometry.h"

#include <QImage>

#include <map>

namespace tarn {

class DevicePainter;
struct TimelineColors;

/// Pictures of key marks, made when they are first needed. The left half of a mark shows how the span before the key ends,
/// the right one how that behind it begins: straight, softly (round) or hard (hollow). Keys so close that their
/// marks would lie in a heap are drawn as one long mark with a tick for each.
class KeyStamps {
public:
    enum class Look { Usual, Selected };

    /// `size` of a mark in pixels of the layout, odd.
    KeyStamps(int size, double ratio) : m_size(size), m_ratio(ratio) {}

    /// Draws the marks of the columns, which ascend; `top` is their upper edge.
    void draw(DevicePainter& painter, const TimelineColors& colors, const std::vector<KeyStack>& columns, int top,
              Look look);

private:
    enum Half { Straight, Soft, Hard };
    struct Shape {
        Look look;
        Half left;
        Half right;
        int width; ///< in pixels of the screen
        auto operator<=>(const Shape&) const = default;
    };

    void draw_run(DevicePainter& painter, const TimelineColors& colors, const KeyStack& first, int last, int top,
                  Look look);
    const QImage& stamp(const Shape& shape, const TimelineColors& colors);
    QImage make(const Shape& shape, const TimelineColors& colors) const;

    int m_size;
    double m_ratio;
    std::map<Shape, QImage> m_stamps;
};

} // namespace tarn
