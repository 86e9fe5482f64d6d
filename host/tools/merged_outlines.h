#pragma once

#include <QRectF>

#include <vector>

class QColor;
class QPainter;

namespace tarn {

/// Draws a line one pixel of the view wide around each of `frames`, in a colour that covers. Sides on one line become
/// one: thousands of frames that stand in rows, or lie over each other, take no longer than what is seen of them.
void draw_merged_outlines(QPainter& painter, const std::vector<QRectF>& frames, const QColor& color);

} // namespace tarn
