#pragma once

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QRectF>

#include <vector>

namespace tarn {

/// The side of a rectangle, or its middle line, that is brought into line with that of another one.
enum class Edge { Left, MiddleX, Right, Top, MiddleY, Bottom };

enum class Dimension { Width, Height, Both };

/// Truncation toward zero; what no int can hold becomes the nearest that one can.
int truncated(double value);

// Each of these answers for one object and the one that it follows. Controls have places and sizes in fractions of
// pixels and come to lie on whole ones; dialogs are given in whole pixels with their caption bars.
QPointF aligned(Edge edge, const QRectF& control, const QRectF& reference);
QPoint aligned(Edge edge, const QRect& dialog, const QRect& reference);
QSizeF matched(Dimension dimension, const QRectF& control, const QRectF& reference);
QSize matched(Dimension dimension, const QRect& dialog, const QRect& reference);

/// Where controls come to stand, in the order given, so that the gaps between neighbours are equal and the outer edges
/// of all, `reference` included, are kept. The gaps are negative where there is not enough room. Controls that begin at
/// the same whole pixel keep their order. Nothing moves when there are fewer than two.
std::vector<QPointF> distributed(Qt::Orientation direction, const std::vector<QRectF>& controls,
                                 const QRectF& reference);

/// How far objects have to be moved together so that their common bounds touch `edge` of an area at the origin, or lie
/// on its middle line; zero across.
QPointF area_offset(Edge edge, const std::vector<QRectF>& objects, const QSizeF& area);

/// The Anchor of an object that was at `anchor` and is aligned to `edge` of its area. One that scales goes on scaling.
int anchor_at_edge(Edge edge, int anchor);

} // namespace tarn
