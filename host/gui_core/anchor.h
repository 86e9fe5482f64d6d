#pragma once

#include <QRectF>
#include <QSizeF>

namespace tarn {

/// To what a dialog or control keeps its distance when the area that holds it changes size. The numbers are stored
/// with the objects; they run clockwise from the top left and end with the centre.
enum Anchor : int {
    anchor_top_left = 0,
    anchor_top = 1,
    anchor_top_right = 2,
    anchor_right = 3,
    anchor_bottom_right = 4,
    anchor_bottom = 5,
    anchor_bottom_left = 6,
    anchor_left = 7,
    anchor_centre = 8,
    anchor_scale = 9, ///< no anchor: place and size scale with the area
};

/// Where `rect`, laid out in an area of the size `base`, stands in an area of the size `area`. A base that is empty
/// counts as equal to the area. Shifts by half a difference are truncated toward zero, so places stay whole numbers.
QRectF anchored(const QRectF& rect, const QSizeF& base, const QSizeF& area, int anchor);

} // namespace tarn
