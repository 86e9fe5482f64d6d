#include "world_gizmo.h"

#include "world_shape.h"

#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <array>

namespace tarn {

namespace {

// Pixels of the view.
constexpr float arrow_begin = 16;
constexpr float arrow_end = 84;
constexpr float arc_radius = 62;
constexpr float cube_seat = 104;
constexpr float ground_begin = 18;
constexpr float ground_end = 38;
constexpr double cube_side = 9;
constexpr double reach = 6; ///< beside a handle that still hits it

constexpr int arc_pieces = 12;
const std::array axis_colors{QColor(0xf0, 0x5a, 0x5a), QColor(0x6c, 0xd0, 0x5a), QColor(0x5a, 0x9c, 0xff)};
const QColor held_color(0xff, 0xb0, 0x3a);
const QColor plain_color(0xf0, 0xf0, 0xf0);

/// In the order in which they are hit.
constexpr std::array parts{GizmoPart::Size,   GizmoPart::SizeX, GizmoPart::SizeY, GizmoPart::SizeZ,
                           GizmoPart::Ground, GizmoPart::MoveX, GizmoPart::MoveY, GizmoPart::MoveZ,
                           GizmoPart::TurnX,  GizmoPart::TurnY, GizmoPart::TurnZ};

QColor color_of(GizmoPart part, GizmoPart held)
{
    if (part == held)
        return held_color;
    if (part == GizmoPart::Ground)
        return axis_colors[1];
    return part == GizmoPart::Size ? plain_color : axis_colors[std::size_t(axis_of(part))];
}

} // namespace

bool is_axis_of(GizmoPart part, GizmoPart first)
{
    return part >= first && int(part) < int(first) + 3;
}

int axis_of(GizmoPart part)
{
    return (int(part) - int(GizmoPart::MoveX)) % 3;
}

QVector3D axis_direction(int axis)
{
    QVector3D direction;
    direction[axis] = 1;
    return direction;
}

WorldGizmo::WorldGizmo(const ViewProjection& view, const QVector3D& pivot, const QQuaternion& turn, double pixel)
    : m_view(view), m_pivot(pivot), m_turn(turn), m_pixel(pixel), m_unit(float(view.metres_per_pixel(pivot) * pixel))
{
}

QVector3D WorldGizmo::direction(GizmoPart part) const
{
    const QVector3D axis = axis_direction(axis_of(part));
    return is_axis_of(part, GizmoPart::SizeX) ? m_turn.rotatedVector(axis) : axis;
}

std::vector<QVector3D> WorldGizmo::ground() const
{
    return {at({ground_begin, 0, ground_begin}), at({ground_end, 0, ground_begin}), at({ground_end, 0, ground_end}),
            at({ground_begin, 0, ground_end})};
}

/// The quarter of a circle between the two other axes.
std::vector<QVector3D> WorldGizmo::arc(int axis) const
{
    std::vector<QVector3D> points;
    for (int i = 0; i <= arc_pieces; ++i) {
        const float angle = float(M_PI_2) * float(i) / arc_pieces;
        points.push_back(at(
            arc_radius
            * (axis_direction((axis + 1) % 3) * std::cos(angle) + axis_direction((axis + 2) % 3) * std::sin(angle))));
    }
    return points;
}

/// Where the middle of a scaling handle is seen.
std::optional<QPointF> WorldGizmo::cube(GizmoPart part) const
{
    return m_view.place(part == GizmoPart::Size ? m_pivot : at(direction(part) * cube_seat));
}

std::optional<QPointF> WorldGizmo::above() const
{
    const auto middle = m_view.place(m_pivot);
    return middle ? std::optional(*middle - QPointF(0, (double(cube_seat) + cube_side) * m_pixel)) : std::nullopt;
}

double WorldGizmo::distance(GizmoPart part, QPointF place) const
{
    if (part == GizmoPart::Size || is_axis_of(part, GizmoPart::SizeX)) {
        const auto middle = cube(part);
        return middle ? std::max(0.0, QLineF(*middle, place).length() - cube_side / 2 * m_pixel) : far_away;
    }
    if (part == GizmoPart::Ground)
        return m_view.face(ground()).containsPoint(place, Qt::OddEvenFill) ? 0 : far_away;
    if (is_axis_of(part, GizmoPart::MoveX))
        return distance_to_line(m_view, place, at(direction(part) * arrow_begin), at(direction(part) * arrow_end));
    const std::vector<QVector3D> points = arc(axis_of(part));
    double nearest = far_away;
    for (std::size_t i = 1; i < points.size(); ++i)
        nearest = std::min(nearest, distance_to_line(m_view, place, points[i - 1], points[i]));
    return nearest;
}

GizmoPart WorldGizmo::part_at(QPointF place) const
{
    GizmoPart found = GizmoPart::None;
    double nearest = reach * m_pixel;
    for (const GizmoPart part : parts)
        if (const double away = distance(part, place); away < nearest) {
            nearest = away;
            found = part;
        }
    return found;
}

void WorldGizmo::paint(QPainter& painter, GizmoPart held) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const auto line = [&](const QVector3D& from, const QVector3D& to, const QColor& color, double width) {
        if (const auto shown = m_view.line(from, to)) {
            painter.setPen(QPen(color, width * m_pixel, Qt::SolidLine, Qt::RoundCap));
            painter.drawLine(*shown);
        }
    };
    for (const int axis : {0, 1, 2}) {
        const auto turn = GizmoPart(int(GizmoPart::TurnX) + axis);
        const std::vector<QVector3D> points = arc(axis);
        for (std::size_t i = 1; i < points.size(); ++i)
            line(points[i - 1], points[i], color_of(turn, held), 2);
        const auto move = GizmoPart(int(GizmoPart::MoveX) + axis);
        const QVector3D way = direction(move);
        line(at(way * arrow_begin), at(way * arrow_end), color_of(move, held), 2.5);
        for (const int side : {-1, 1})
            line(at(way * arrow_end), at(way * (arrow_end - 10) + axis_direction((axis + 1) % 3) * float(side) * 5),
                 color_of(move, held), 2.5);
    }
    QColor shade = color_of(GizmoPart::Ground, held);
    painter.setPen(QPen(shade, m_pixel));
    shade.setAlpha(90);
    painter.setBrush(shade);
    painter.drawPolygon(m_view.face(ground()));
    painter.setPen(QPen(QColor(20, 30, 34), m_pixel));
    for (const GizmoPart part : {GizmoPart::SizeX, GizmoPart::SizeY, GizmoPart::SizeZ, GizmoPart::Size})
        if (const auto middle = cube(part)) {
            const double side = cube_side * m_pixel;
            painter.setBrush(color_of(part, held));
            painter.drawRect(QRectF(*middle - QPointF(side, side) / 2, QSizeF(side, side)));
        }
    painter.restore();
}

} // namespace tarn
