#pragma once

#include "look.h"

#include <QImage>
#include <QMargins>
#include <QRect>

namespace tarn {

/// Where an element's picture is in the sheet of a skin, in sheet units, and how it fills an area: as nine slices with
/// fixed edges, or (an icon) scaled as a whole.
struct ElementPicture {
    QRect rect;
    QMargins edges;
    bool icon = false;
};

/// One unit of the sheet is one pixel of the interface, and so many pixels of an atlas.
constexpr int atlas_pixels_per_unit = 2;

/// Whether the element looks different in each state.
bool has_states(Element element);
ElementPicture sheet_picture(Element element, VisualState state);
/// The sheet leaves room at its right, a row for each part that looks like another one until an author gives it a
/// picture of its own: the room of that row, in sheet units.
QRect spare_cell(Element element, VisualState state, int row);

/// The sheet of the skin that comes with the program, with straight alpha.
const QImage& default_sheet();

} // namespace tarn
