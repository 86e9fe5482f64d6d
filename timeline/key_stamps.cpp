#include "key_stamps.h"

#include "device_painter.h"
#include "timeline_colors.h"

#include <QPainterPath>

namespace tarn {

namespace {

constexpr float straight_ease = 1; // below, nobody sees a difference
constexpr int most_joined = 4;     // columns between keys whose marks would lie in a heap
constexpr std::size_t most_stamps = 512;

} // namespace

void KeyStamps::draw(DevicePainter& painter, const TimelineColors& colors, const std::vector<KeyStack>& columns,
                     int top, Look look)
{
    // Of what is selected nothing else may look as if it were.
    const int joined = look == Look::Usual ? most_joined : 1;
    std::vector<QRect> ticks;
    for (std::size_t i = 0; i < columns.size();) {
        const KeyStack& first = columns[i];
        int last = first.column;
        while (++i < columns.size() && columns[i].column <= last + joined) {
            if (columns[i].column > last + 1)
                ticks.push_back(painter.at(QRectF(columns[i].column, top + m_size / 2 - 1, 1, 3)));
            last = columns[i].column;
        }
        draw_run(painter, colors, first, last, top, look);
    }
    painter.fill(ticks, colors.key_edge);
}

void KeyStamps::draw_run(DevicePainter& painter, const TimelineColors& colors, const KeyStack& first, int last, int top,
                         Look look)
{
    const auto half = [](float ease, Half towards_late, Half towards_early) {
        return ease > straight_ease ? towards_late : ease < -straight_ease ? towards_early : Straight;
    };
    const bool single = last == first.column && first.first == first.last;
    const int margin = m_size / 2;
    const int left = painter.at(first.column - margin);
    const Shape shape{look, single ? half(first.ease, Hard, Soft) : Straight,
                      single ? half(first.ease_after, Soft, Hard) : Straight, painter.at(last + margin + 1) - left};
    painter.image(left, painter.at(top), stamp(shape, colors));
}

const QImage& KeyStamps::stamp(const Shape& shape, const TimelineColors& colors)
{
    if (m_stamps.size() >= most_stamps)
        m_stamps.clear();
    QImage& found = m_stamps[shape];
    if (found.isNull())
        found = make(shape, colors);
    return found;
}

/// A diamond whose halves bulge or cave in, and stand apart where it is a long one.
QImage KeyStamps::make(const Shape& shape, const TimelineColors& colors) const
{
    const double height = m_size * m_ratio;
    const double half_height = height / 2;
    const double width = shape.width;
    QImage image(shape.width, int(std::lround(height)), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const auto corner = [&](QPainterPath& path, const QPointF& to, const QPointF& outer, Half half) {
        const QPointF middle = (path.currentPosition() + to) / 2;
        if (half == Straight)
            path.lineTo(to);
        else
            path.quadTo(half == Soft ? middle + (outer - middle) * 0.75 : middle - (outer - middle) * 0.55, to);
    };
    const auto mark = [&](double inset) {
        const double left = half_height;
        const double right = width - half_height;
        QPainterPath path(QPointF(left, inset));
        path.lineTo(right, inset);
        corner(path, {width - inset, half_height}, {width - inset, inset}, shape.right);
        corner(path, {right, height - inset}, {width - inset, height - inset}, shape.right);
        path.lineTo(left, height - inset);
        corner(path, {inset, half_height}, {inset, height - inset}, shape.left);
        corner(path, {left, inset}, {inset, inset}, shape.left);
        path.closeSubpath();
        return path;
    };
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool selected = shape.look == Look::Selected;
    painter.fillPath(mark(0), selected ? colors.selected_edge : colors.key_edge);
    painter.fillPath(mark(1.4 * m_ratio), selected ? colors.selected : colors.key);
    if (selected) {
        const double dot = 1.5 * m_ratio;
        painter.setPen(Qt::NoPen);
        painter.setBrush(colors.selected_edge);
        painter.drawRoundedRect(
            QRectF(half_height - dot, half_height - dot, width - 2 * half_height + 2 * dot, 2 * dot), dot, dot);
    }
    return image;
}

} // namespace tarn
