#include "world_object.h"

#include <QQuaternion>

#include <algorithm>
#include <array>

namespace tarn {

namespace {

constexpr std::array<WorldTypeRow, world_type_count> rows{{
    {WorldType::Model, "model", "CModel", u"模型", u"Model"},
    {WorldType::AnimatedModel, "animated_model", "CAniModel", u"动画模型", u"Animated model"},
    {WorldType::Skeleton, "skeleton", "CSkeletonModel", u"骨骼", u"Skeleton"},
    {WorldType::Camera, "camera", "CCamera", u"相机", u"Camera"},
    {WorldType::Path, "path", "CPath", u"路径", u"Path"},
    {WorldType::Panel, "panel", "CPanel", u"面板", u"Panel"},
}};

} // namespace

std::span<const WorldTypeRow> world_types()
{
    return rows;
}

const WorldTypeRow& row_of(WorldType type)
{
    return rows[std::size_t(type)];
}

const WorldTypeRow* world_type_named(const QString& kind)
{
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [&](const WorldTypeRow& row) { return kind == QLatin1String(row.kind); });
    return found == rows.end() ? nullptr : &*found;
}

QString WorldObject::file() const
{
    return has_file() ? state<ModelState>().file : QString();
}

void WorldObject::set_file(const QString& file)
{
    if (has_file())
        change<&ModelState::file>(file);
}

void WorldObject::set_action(const QString& action)
{
    if (has_actions())
        change<&MovingModelState::action>(action);
}

QVector3D WorldObject::place() const
{
    const WorldObjectState& s = object_state();
    return {s.x, s.y, s.z};
}

QVector3D WorldObject::turn() const
{
    const WorldObjectState& s = object_state();
    return {s.turn_x, s.turn_y, s.turn_z};
}

QVector3D WorldObject::size() const
{
    const WorldObjectState& s = object_state();
    return {s.size_x, s.size_y, s.size_z};
}

void WorldObject::set_place(const QVector3D& place)
{
    const UserAction action(journal(), {});
    change<&WorldObjectState::x>(place.x());
    change<&WorldObjectState::y>(place.y());
    change<&WorldObjectState::z>(place.z());
}

void WorldObject::set_turn(const QVector3D& degrees)
{
    const UserAction action(journal(), {});
    change<&WorldObjectState::turn_x>(degrees.x());
    change<&WorldObjectState::turn_y>(degrees.y());
    change<&WorldObjectState::turn_z>(degrees.z());
}

void WorldObject::set_size(const QVector3D& factors)
{
    const UserAction action(journal(), {});
    change<&WorldObjectState::size_x>(factors.x());
    change<&WorldObjectState::size_y>(factors.y());
    change<&WorldObjectState::size_z>(factors.z());
}

void WorldObject::set_points(const QList<QVector3D>& points)
{
    if (type() == WorldType::Path)
        change<&PathState::points>(points);
}

QMatrix4x4 WorldObject::transform() const
{
    QMatrix4x4 matrix;
    matrix.translate(place());
    matrix.rotate(QQuaternion::fromEulerAngles(turn()));
    matrix.scale(size());
    return matrix;
}

const PathShape& WorldObject::shape() const
{
    if (!m_shape) {
        const auto* path = dynamic_cast<const PathState*>(&object_state());
        m_shape = path ? PathShape(path->points, path->closed, path->smooth) : PathShape();
    }
    return *m_shape;
}

} // namespace tarn
