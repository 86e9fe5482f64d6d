#pragma once

#include "gui_core/gui_core.h"

#include <QRectF>

class QPainter;

namespace tarn {

/// Draws what a style's part looks like, large, into `area`: an element's picture, or a sample in the colour. `scale` is
/// the device's pixels for one of the area's.
void paint_part(QPainter& painter, const CGuiCore& core, const LookPart& part, const QRectF& area, double scale);

/// A chequered ground, light to dark, against which any picture stands out.
void paint_contrast(QPainter& painter, const QRectF& area);

} // namespace tarn
