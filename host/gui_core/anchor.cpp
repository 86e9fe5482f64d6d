#include "anchor.h"

#include <cmath>

namespace tarn {

namespace {

/// 0 keeps the distance to the near side, 1 to the middle, 2 to the far side.
int horizontal_side(int anchor)
{
    switch (anchor) {
    case anchor_top:
    case anchor_centre:
    case anchor_bottom: return 1;
    case anchor_top_right:
    case anchor_right:
    case anchor_bottom_right: return 2;
    default: return 0;
    }
}

int vertical_side(int anchor)
{
    switch (anchor) {
    case anchor_left:
    case anchor_centre:
    case anchor_right: return 1;
    case anchor_bottom_left:
    case anchor_bottom:
    case anchor_bottom_right: return 2;
    default: return 0;
    }
}

double shift(double growth, int side)
{
    return side == 0 ? 0 : side == 1 ? std::trunc(growth / 2) : growth;
}

} // namespace

QRectF anchored(const QRectF& rect, const QSizeF& base, const QSizeF& area, int anchor)
{
    if (base.isEmpty() || base == area)
        return rect;
    if (anchor == anchor_scale) {
        const double sx = area.width() / base.width();
        const double sy = area.height() / base.height();
        return {rect.x() * sx, rect.y() * sy, rect.width() * sx, rect.height() * sy};
    }
    return rect.translated(shift(area.width() - base.width(), horizontal_side(anchor)),
                           shift(area.height() - base.height(), vertical_side(anchor)));
}

} // namespace tarn
