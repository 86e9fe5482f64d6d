#include "world_gestures.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "engine/scene_selection.h"
#include "selection_overlay.h"
#include "world/world_scene.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr float place_step = 0.1f; ///< metres
constexpr double turn_step = 15;   ///< degrees
constexpr double size_step = 0.1;
constexpr double size_way = 100; ///< pixels that double the size in the middle handle
constexpr double least_size = 0.01;

float stepped(float value)
{
    return std::round(value / place_step) * place_step;
}

/// `numbers`, with the steps in which the mouse goes while Ctrl is held.
QString with_steps(const QString& numbers, const QString& step)
{
    return QStringLiteral("%1   Ctrl: %2").arg(numbers, step);
}

QString metres(const QVector3D& place)
{
    const auto numbers = QStringLiteral("X %1  Y %2  Z %3 m")
                             .arg(double(place.x()), 0, 'f', 2)
                             .arg(double(place.y()), 0, 'f', 2)
                             .arg(double(place.z()), 0, 'f', 2);
    return with_steps(numbers, QStringLiteral("%1 m").arg(double(place_step), 0, 'f', 1));
}

double angle_of(QPointF way)
{
    return qRadiansToDegrees(std::atan2(-way.y(), way.x()));
}

} // namespace

const QList<QVector3D>& points_of(const WorldObject& path)
{
    static const QList<QVector3D> none;
    const auto* state = dynamic_cast<const PathState*>(&path.object_state());
    return state ? state->points : none;
}

std::vector<WorldObject*> movable_objects(CBaseWorld& world)
{
    std::vector<WorldObject*> objects = world.selection().objects();
    std::erase_if(objects, [](const WorldObject* object) { return object->is_locked() || !object->is_visible(); });
    return objects;
}

void WorldGesture::begin()
{
    m_action.emplace(m_world.document().journal(), name());
}

void WorldGesture::drag(QPointF place, Qt::KeyboardModifiers modifiers)
{
    m_place = place;
    change(place, modifiers.testFlag(Qt::ControlModifier), modifiers);
    m_world.update_all_views();
}

void WorldGesture::tell() const
{
    m_world.broadcast(ui_world_selection_changed);
    m_world.update_all_views();
}

void WorldGesture::finish()
{
    m_action.reset();
    tell();
}

void WorldGesture::cancel()
{
    m_world.document().journal().cancel();
    m_action.reset();
    tell();
}

void WorldGesture::paint(QPainter& painter) const
{
    paint_label(painter, QRectF(m_place, QSizeF(1, 1)), numbers());
}

// What the gizmo does ----------------------------------------------------------------------------------------------------

GizmoGesture::GizmoGesture(CBaseWorld& world, const ViewProjection& view, QPointF start, GizmoPart part)
    : WorldGesture(world, view, start), m_part(part)
{
}

QString GizmoGesture::name() const
{
    if (is_axis_of(m_part, GizmoPart::TurnX))
        return lang(u"旋转物体", u"Turn Object");
    if (m_part == GizmoPart::Size || is_axis_of(m_part, GizmoPart::SizeX))
        return lang(u"缩放物体", u"Scale Object");
    return lang(u"移动物体", u"Move Object");
}

void GizmoGesture::begin()
{
    for (WorldObject* object : movable_objects(m_world))
        m_before.push_back({object, object->place(), QQuaternion::fromEulerAngles(object->turn()), object->size()});
    if (m_before.empty())
        return WorldGesture::begin();
    const Before& last = m_before.back();
    m_pivot = last.place;
    const QVector3D axis = axis_direction(axis_of(m_part));
    m_axis = is_axis_of(m_part, GizmoPart::SizeX) ? last.turn.rotatedVector(axis) : axis;
    m_last = m_start;
    WorldGesture::begin();
}

void GizmoGesture::change(QPointF place, bool in_steps, Qt::KeyboardModifiers)
{
    if (m_before.empty())
        return;
    if (is_axis_of(m_part, GizmoPart::TurnX))
        turn(place, in_steps);
    else if (m_part == GizmoPart::Size || is_axis_of(m_part, GizmoPart::SizeX))
        scale(place, in_steps);
    else
        move(place, in_steps);
}

/// How far the mouse has gone in the world; none where that has no answer, towards the horizon for example.
std::optional<QVector3D> GizmoGesture::offset(QPointF place) const
{
    const Ray from = m_view.ray(m_start);
    const Ray to = m_view.ray(place);
    if (m_part == GizmoPart::Ground) {
        const auto begin = from.meet(m_pivot, {0, 1, 0});
        const auto end = to.meet(m_pivot, {0, 1, 0});
        if (!begin || !end)
            return {};
        const QVector3D way = *end - *begin;
        return QVector3D(way.x(), 0, way.z()); // Rounding must not lift it.
    }
    const auto begin = from.nearest_on(m_pivot, m_axis);
    const auto end = to.nearest_on(m_pivot, m_axis);
    return begin && end ? std::optional(m_axis * (*end - *begin)) : std::nullopt;
}

void GizmoGesture::move(QPointF place, bool in_steps)
{
    auto way = offset(place);
    if (!way)
        return;
    if (in_steps)
        for (int part = 0; part < 3; ++part)
            if (m_part == GizmoPart::Ground ? part != 1 : part == axis_of(m_part))
                (*way)[part] = stepped(m_pivot[part] + (*way)[part]) - m_pivot[part];
    for (const Before& before : m_before)
        before.object->set_place(before.place + *way);
}

void GizmoGesture::turn(QPointF place, bool in_steps)
{
    const auto middle = m_view.place(m_pivot);
    if (!middle)
        return;
    // From the last place on, so that the mouse can go round more than once.
    double way = angle_of(place - *middle) - angle_of(m_last - *middle);
    way -= 360 * std::round(way / 360);
    const bool faces_away = QVector3D::dotProduct(m_axis, m_view.eye() - m_pivot) < 0;
    m_angle += faces_away ? -way : way;
    m_last = place;
    m_shown = in_steps ? std::round(m_angle / turn_step) * turn_step : m_angle;
    const QQuaternion turned = QQuaternion::fromAxisAndAngle(m_axis, float(m_shown));
    for (const Before& before : m_before) {
        before.object->set_turn((turned * before.turn).toEulerAngles());
        before.object->set_place(m_pivot + turned.rotatedVector(before.place - m_pivot));
    }
}

void GizmoGesture::scale(QPointF place, bool in_steps)
{
    double factor = 1;
    if (m_part == GizmoPart::Size) {
        const QPointF way = place - m_start;
        factor = 1 + (way.x() - way.y()) / size_way;
    } else {
        const auto begin = m_view.ray(m_start).nearest_on(m_pivot, m_axis);
        const auto end = m_view.ray(place).nearest_on(m_pivot, m_axis);
        if (!begin || !end || qFuzzyIsNull(*begin))
            return;
        factor = double(*end / *begin);
    }
    if (in_steps)
        factor = std::round(factor / size_step) * size_step;
    m_shown = std::max(least_size, factor);
    for (const Before& before : m_before) {
        QVector3D size = before.size;
        for (int part = 0; part < 3; ++part)
            if (m_part == GizmoPart::Size || part == axis_of(m_part))
                size[part] *= float(m_shown);
        before.object->set_size(size);
    }
}

QString GizmoGesture::numbers() const
{
    if (m_before.empty())
        return {};
    if (is_axis_of(m_part, GizmoPart::TurnX))
        return with_steps(QStringLiteral("%1°").arg(m_shown, 0, 'f', 1), QStringLiteral("%1°").arg(turn_step));
    if (m_part == GizmoPart::Size || is_axis_of(m_part, GizmoPart::SizeX))
        return with_steps(QStringLiteral("× %1").arg(m_shown, 0, 'f', 2), QString::number(size_step));
    return metres(m_before.back().object->place());
}

// Points of a path -------------------------------------------------------------------------------------------------------

PathPointGesture::PathPointGesture(CBaseWorld& world, const ViewProjection& view, QPointF start, WorldObject& path,
                                   int point)
    : WorldGesture(world, view, start), m_path(path), m_point(point), m_points(points_of(path))
{
}

QString PathPointGesture::name() const
{
    return lang(u"移动路径点", u"Move Path Point");
}

void PathPointGesture::change(QPointF place, bool in_steps, Qt::KeyboardModifiers modifiers)
{
    const QMatrix4x4 transform = m_path.transform();
    const QVector3D before = transform.map(m_points[m_point]);
    const QVector3D up(0, 1, 0);
    QVector3D point = before;
    if (modifiers.testFlag(Qt::ShiftModifier)) {
        const auto height = m_view.ray(place).nearest_on(before, up);
        if (height)
            point += up * *height;
    } else if (const auto met = m_view.ray(place).meet(before, up)) {
        point = *met;
    }
    if (in_steps)
        for (int part = 0; part < 3; ++part)
            point[part] = stepped(point[part]);
    bool can_go_back = false;
    const QMatrix4x4 back = transform.inverted(&can_go_back);
    if (!can_go_back) // A path without a size has no places of its own.
        return;
    QList<QVector3D> points = m_points;
    points[m_point] = back.map(point);
    m_path.set_points(points);
}

QString PathPointGesture::numbers() const
{
    return metres(m_path.transform().map(points_of(m_path).value(m_point)));
}

} // namespace tarn
