#include "led_by_camera.h"

#include "animation/animation_scene.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "engine/orbit_camera.h"
#include "world/world_object.h"

#include <QtMath>

#include <cmath>

namespace tarn {

namespace {

/// Degrees about the axis that points up.
float turn_towards(const QVector3D& direction)
{
    return float(qRadiansToDegrees(std::atan2(double(direction.x()), double(direction.z()))));
}

bool lead(WorldObject& figure, AnimationTarget& kind, const OrbitCamera& camera)
{
    const QVector3D place(camera.target().x(), figure.place().y(), camera.target().z());
    const QVector3D turn(0, turn_towards(camera.target() - camera.eye()), 0);
    if (figure.place() == place && figure.turn() == turn)
        return false;
    Pose pose;
    pose.set_vec(Channel::Position, place.x(), place.y(), place.z());
    pose.set_vec(Channel::Rotation, turn.x(), turn.y(), turn.z());
    kind.show(figure, pose);
    return true;
}

} // namespace

bool lead_by_camera(CAnimationScene& animation, const OrbitCamera& camera)
{
    AnimationTarget* kind = animation.target_kind(TimerObjectType::Skeleton);
    if (!kind || camera.looks_through())
        return false;
    bool moved = false;
    for (const CTimebar* bar : animation.bars())
        for (const CTimerObject* object : bar->objects())
            if (object->is_led_by_camera())
                if (auto* figure = dynamic_cast<WorldObject*>(object->target_object()))
                    moved |= lead(*figure, *kind, camera);
    return moved;
}

} // namespace tarn
