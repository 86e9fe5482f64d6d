#include "camera_view.h"

#include "base_world.h"
#include "core/language.h"
#include "world/world_scene.h"

#include <QQuaternion>

namespace tarn {

CameraView::CameraView(CBaseWorld& world) : m_world(world)
{
    m_world.document().changes().add_listener(this);
}

CameraView::~CameraView()
{
    m_world.document().changes().remove_listener(this);
}

WorldObject* CameraView::camera() const
{
    WorldObject* object = m_world.objects().find(m_world.camera().looks_through());
    return object && object->type() == WorldType::Camera ? object : nullptr;
}

void CameraView::look_through(const WorldObject* camera)
{
    follow(camera && camera->type() == WorldType::Camera ? camera : nullptr);
    m_world.update_all_views();
}

void CameraView::follow(const WorldObject* camera)
{
    if (!camera)
        return m_world.camera().look_freely();
    QMatrix4x4 place; // Without the size, which would distort what is seen.
    place.translate(camera->place());
    place.rotate(QQuaternion::fromEulerAngles(camera->turn()));
    const auto& state = static_cast<const CameraState&>(camera->object_state());
    m_world.camera().look_through(
        {.object = camera->id(), .view = place.inverted(), .field_of_view = state.field_of_view});
}

void CameraView::model_changed(const ModelChange&)
{
    if (m_world.camera().looks_through())
        follow(camera());
}

void CameraView::place_camera(WorldObject& camera) const
{
    const UserAction action(m_world.document().journal(), lang(u"相机移到视图位置", u"Camera to View"));
    const OrbitCamera& view = m_world.camera();
    if (view.looks_through() == camera.id())
        return;
    const QVector3D place = view.eye();
    QVector3D turn(float(-view.pitch()), float(view.yaw()), 0);
    if (const WorldObject* other = this->camera())
        turn = other->turn();
    camera.set_place(place);
    camera.set_turn(turn);
}

} // namespace tarn
