#include "align_math.h"

#include "gui_core/anchor.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tarn {

namespace {

/// What a rectangle covers of one axis.
template <class Number>
struct Span {
    Number start;
    Number length;
};

enum class Part { Near, Middle, Far };

bool is_horizontal(Edge edge)
{
    return edge == Edge::Left || edge == Edge::MiddleX || edge == Edge::Right;
}

Qt::Orientation axis(Edge edge)
{
    return is_horizontal(edge) ? Qt::Horizontal : Qt::Vertical;
}

Part part(Edge edge)
{
    if (edge == Edge::Left || edge == Edge::Top)
        return Part::Near;
    return edge == Edge::MiddleX || edge == Edge::MiddleY ? Part::Middle : Part::Far;
}

template <class Rect>
auto span(Qt::Orientation axis, const Rect& rect)
{
    return axis == Qt::Horizontal ? Span{rect.x(), rect.width()} : Span{rect.y(), rect.height()};
}

template <class Point, class Number>
Point moved_along(Qt::Orientation axis, Point place, Number start)
{
    axis == Qt::Horizontal ? place.setX(start) : place.setY(start);
    return place;
}

double aligned_start(Part part, Span<double> control, Span<double> reference)
{
    switch (part) {
    case Part::Near: return truncated(reference.start);
    case Part::Middle: return truncated(truncated(reference.start + reference.length * 0.5) - control.length * 0.5);
    case Part::Far: break;
    }
    return truncated(truncated(reference.start + reference.length) - control.length);
}

int aligned_start(Part part, Span<int> dialog, Span<int> reference)
{
    switch (part) {
    case Part::Near: return reference.start;
    case Part::Middle: return reference.start + reference.length / 2 - dialog.length / 2;
    case Part::Far: break;
    }
    return reference.start + reference.length - dialog.length;
}

template <class Rect>
auto aligned_place(Edge edge, const Rect& rect, const Rect& reference)
{
    const auto start = aligned_start(part(edge), span(axis(edge), rect), span(axis(edge), reference));
    return moved_along(axis(edge), rect.topLeft(), start);
}

constexpr Anchor anchors[3][3] = {
    {anchor_top_left, anchor_top, anchor_top_right},
    {anchor_left, anchor_centre, anchor_right},
    {anchor_bottom_left, anchor_bottom, anchor_bottom_right},
};

constexpr int beyond_all = 999999; ///< where the search for the smallest edge begins

} // namespace

int truncated(double value)
{
    using Limits = std::numeric_limits<int>;
    return int(std::clamp(value, double(Limits::min()), double(Limits::max())));
}

QPointF aligned(Edge edge, const QRectF& control, const QRectF& reference)
{
    return aligned_place(edge, control, reference);
}

QPoint aligned(Edge edge, const QRect& dialog, const QRect& reference)
{
    return aligned_place(edge, dialog, reference);
}

QSizeF matched(Dimension dimension, const QRectF& control, const QRectF& reference)
{
    return {dimension == Dimension::Height ? control.width() : truncated(reference.width()),
            dimension == Dimension::Width ? control.height() : truncated(reference.height())};
}

QSize matched(Dimension dimension, const QRect& dialog, const QRect& reference)
{
    return {dimension == Dimension::Height ? dialog.width() : reference.width(),
            dimension == Dimension::Width ? dialog.height() : reference.height()};
}

std::vector<QPointF> distributed(Qt::Orientation direction, const std::vector<QRectF>& controls,
                                 const QRectF& reference)
{
    std::vector<QPointF> places(controls.size());
    std::transform(controls.begin(), controls.end(), places.begin(), [](const QRectF& rect) { return rect.topLeft(); });
    if (controls.size() < 2)
        return places;
    const Span outer = span(direction, reference);
    int left = truncated(outer.start);
    int right = truncated(outer.start + outer.length);
    int sum = 0;
    std::vector<std::pair<int, quint32>> order; ///< by edge, and among equal ones by selection
    order.reserve(controls.size());
    for (quint32 i = 0; i < controls.size(); ++i) {
        const Span one = span(direction, controls[i]);
        const int start = truncated(one.start);
        left = std::min(left, start);
        right = std::max(right, truncated(start + one.length));
        sum = truncated(sum + one.length);
        order.emplace_back(start, i);
    }
    std::sort(order.begin(), order.end());
    const float gap = float(qint64(right) - sum - left) / float(controls.size() - 1);
    auto cursor = float(left);
    for (const auto& [start, i] : order) {
        places[i] = moved_along(direction, places[i], double(cursor));
        cursor = float(span(direction, controls[i]).length) + gap + cursor;
    }
    return places;
}

QPointF area_offset(Edge edge, const std::vector<QRectF>& objects, const QSizeF& area)
{
    int first = beyond_all;
    int last = -beyond_all;
    for (const QRectF& rect : objects) {
        const Span one = span(axis(edge), rect);
        first = std::min(first, truncated(one.start));
        last = std::max(last, truncated(one.start + one.length));
    }
    const double extent = is_horizontal(edge) ? area.width() : area.height();
    double offset = -first;
    if (part(edge) == Part::Far)
        offset = truncated(extent - last);
    else if (part(edge) == Part::Middle)
        offset = truncated(extent * 0.5 - first) - (last - first) * 0.5;
    return moved_along(axis(edge), QPointF(), offset);
}

int anchor_at_edge(Edge edge, int anchor)
{
    const int place = int(part(edge));
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            if (anchors[row][column] == anchor)
                return is_horizontal(edge) ? anchors[row][place] : anchors[place][column];
    return anchor;
}

} // namespace tarn
