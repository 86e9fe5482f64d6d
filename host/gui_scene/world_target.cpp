#include "world_target.h"

#include "channel_fields.h"
#include "engine/world_models.h"
#include "world/world_object.h"

#include <QQuaternion>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr float farthest = FieldType<QList<QVector3D>>::farthest;
constexpr float most_turn = 7200; ///< degrees
constexpr float most_size = 10'000;
constexpr float longest_action = 86'400; ///< seconds
constexpr int endless = 0;               ///< as a number of loops
constexpr QVector3D up(0, 1, 0);

QVector3D vec(const Pose& pose, Channel channel)
{
    return {pose.number(channel, 0), pose.number(channel, 1), pose.number(channel, 2)};
}

void set_vec(Pose& pose, Channel channel, const QVector3D& vec)
{
    pose.set_vec(channel, vec.x(), vec.y(), vec.z());
}

float held(const Pose& pose, Channel channel, int part, float most)
{
    return std::clamp(pose.number(channel, part), -most, most);
}

void put(const Pose& pose, Channel channel, float most, float& x, float& y, float& z)
{
    if (!pose.has(channel))
        return;
    x = held(pose, channel, 0, most);
    y = held(pose, channel, 1, most);
    z = held(pose, channel, 2, most);
}

/// A camera looks along its own -z axis, all else along its z axis.
QQuaternion turned_to(const QVector3D& direction, WorldType type)
{
    const QVector3D ahead = type == WorldType::Camera ? -direction : direction;
    const bool is_upright = std::abs(QVector3D::dotProduct(ahead, up)) > 0.9999f;
    return QQuaternion::fromDirection(ahead, is_upright ? QVector3D(0, 0, 1) : up);
}

const WorldObject& as_path(const ModelObject& path)
{
    return static_cast<const WorldObject&>(path);
}

} // namespace

bool WorldTarget::takes(const ModelObject& object) const
{
    const auto* found = dynamic_cast<const WorldObject*>(&object);
    return found && found->type() == m_type;
}

std::span<const FieldKey> WorldTarget::fields(Channel channel) const
{
    using S = WorldObjectState;
    static const ChannelFields rows[] = {{Channel::Position, {key<&S::x>, key<&S::y>, key<&S::z>}},
                                         {Channel::Rotation, {key<&S::turn_x>, key<&S::turn_y>, key<&S::turn_z>}},
                                         {Channel::Scale, {key<&S::size_x>, key<&S::size_y>, key<&S::size_z>}},
                                         {Channel::Color, {key<&S::color>}},
                                         {Channel::Transparency, {key<&S::transparency>}},
                                         {Channel::Show, {key<&S::visible>}},
                                         {Channel::FieldOfView, {key<&CameraState::field_of_view>}},
                                         {Channel::Action, {key<&MovingModelState::action>}},
                                         {Channel::Loops, {key<&MovingModelState::repeats>}}};
    if (const bool moves = m_type == WorldType::AnimatedModel || m_type == WorldType::Skeleton;
        !moves && (channel == Channel::Action || channel == Channel::Loops))
        return {};
    if (channel == Channel::FieldOfView && m_type != WorldType::Camera)
        return {};
    return fields_of(rows, channel);
}

Pose WorldTarget::pose(const ObjectState& state) const
{
    const auto& s = static_cast<const WorldObjectState&>(state);
    Pose pose;
    pose.set_vec(Channel::Position, s.x, s.y, s.z);
    pose.set_vec(Channel::Rotation, s.turn_x, s.turn_y, s.turn_z);
    pose.set_vec(Channel::Scale, s.size_x, s.size_y, s.size_z);
    pose.set_color(s.color);
    pose.set_number(Channel::Transparency, s.transparency);
    pose.set_whole(Channel::Show, s.visible);
    if (const auto* camera = dynamic_cast<const CameraState*>(&s))
        pose.set_number(Channel::FieldOfView, camera->field_of_view);
    const auto* moving = dynamic_cast<const MovingModelState*>(&s);
    if (const ModelPtr model = moving ? model_of(s) : nullptr) {
        pose.set_whole(Channel::Action, model->find_action(moving->action));
        pose.set_whole(Channel::Loops, moving->repeats ? endless : 1);
    }
    return pose;
}

/// Null while it is being read, and for an object without one.
ModelPtr WorldTarget::model_of(const ObjectState& state) const
{
    const auto* model = dynamic_cast<const ModelState*>(&state);
    return model && m_models && !model->file.isEmpty() ? m_models->library().find(model->file).model : nullptr;
}

/// After its loops the action holds its last pose.
void WorldTarget::show_action(MovingModelState& state, const Pose& pose) const
{
    const ModelPtr model = model_of(state);
    if (!model)
        return;
    const auto& actions = model->data().actions;
    const int number = pose.whole(Channel::Action);
    const bool is_there = number >= 0 && std::size_t(number) < actions.size();
    const int loops = pose.has(Channel::Loops) ? pose.whole(Channel::Loops) : state.repeats ? endless : 1;
    const float duration = is_there ? actions[std::size_t(number)].duration : 0;
    const float time = pose.number(Channel::ActionTime);
    const bool is_over = loops != endless && time >= duration * float(loops);
    state.action = is_there ? actions[std::size_t(number)].name : QString();
    state.action_time = is_over ? duration : std::min(time, longest_action);
    state.repeats = !is_over;
    state.plays = false; // The timebar plays it.
}

bool WorldTarget::can_follow(const ModelObject& object) const
{
    const auto* path = dynamic_cast<const WorldObject*>(&object);
    return path && path->type() == WorldType::Path;
}

void WorldTarget::follow(const ModelObject& path, bool along, Pose& pose) const
{
    const WorldObject& way = as_path(path);
    const QMatrix4x4 transform = way.transform();
    const float share = pose.number(Channel::PathShare);
    set_vec(pose, Channel::Position, transform.map(way.shape().place(share)));
    if (!along && !pose.has(Channel::PathTurn))
        return;
    const QVector3D direction = transform.mapVector(way.shape().direction(share)).normalized();
    const QQuaternion own = along     ? turned_to(direction, m_type)
        : pose.has(Channel::Rotation) ? QQuaternion::fromEulerAngles(vec(pose, Channel::Rotation))
                                      : QQuaternion();
    const float about = pose.has(Channel::PathTurn) ? qRadiansToDegrees(pose.number(Channel::PathTurn)) : 0;
    set_vec(pose, Channel::Rotation, (QQuaternion::fromAxisAndAngle(direction, about) * own).toEulerAngles());
}

void WorldTarget::find_on_path(const ModelObject& path, Pose& pose) const
{
    const WorldObject& way = as_path(path);
    bool can_invert = false;
    const QMatrix4x4 inverse = way.transform().inverted(&can_invert);
    if (!can_invert)
        return;
    pose.set_number(Channel::PathShare, way.shape().nearest_share(inverse.map(vec(pose, Channel::Position))));
    pose.drop(Channel::Position);
}

void WorldTarget::show(ModelObject& object, const Pose& pose)
{
    if (!pose.has(Channel::ActionTime) && shows(this->pose(object.shown_state()), pose))
        return;
    object.write<WorldObjectState>([&](WorldObjectState& s) {
        put(pose, Channel::Position, farthest, s.x, s.y, s.z);
        put(pose, Channel::Rotation, most_turn, s.turn_x, s.turn_y, s.turn_z);
        put(pose, Channel::Scale, most_size, s.size_x, s.size_y, s.size_z);
        if (pose.has(Channel::Color))
            s.color = pose.color();
        if (pose.has(Channel::Transparency))
            s.transparency = std::clamp(pose.number(Channel::Transparency), 0.f, 1.f);
        if (pose.has(Channel::Show))
            s.visible = pose.shows();
        if (auto* camera = dynamic_cast<CameraState*>(&s); camera && pose.has(Channel::FieldOfView))
            camera->field_of_view = std::clamp(pose.number(Channel::FieldOfView), 1.f, 170.f);
        if (auto* moving = dynamic_cast<MovingModelState*>(&s); moving && pose.has(Channel::ActionTime))
            show_action(*moving, pose);
    });
}

} // namespace tarn
