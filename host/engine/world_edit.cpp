#include "world_edit.h"

#include "base_world.h"
#include "core/language.h"
#include "scene_selection.h"
#include "world/world_scene.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr QVector3D beside(0.5f, 0, 0.5f); ///< from an object to its copy, metres
constexpr float least_radius = 0.5f;       ///< metres; nothing is framed nearer

/// Of a new object over the ground, metres.
float height_of(WorldType type)
{
    return type == WorldType::Camera ? 1.5f : type == WorldType::Panel ? 1.f : 0.f;
}

std::vector<QVector3D> corners_of(const WorldObject& object)
{
    if (object.type() == WorldType::Path)
        return object.shape().corners();
    if (const auto* panel = dynamic_cast<const PanelState*>(&object.object_state())) {
        const float x = panel->width / 2;
        const float y = panel->height / 2;
        return {{-x, -y, 0}, {x, y, 0}};
    }
    const float reach = object.type() == WorldType::Camera ? camera_reach : 0.5f;
    return {{-reach, -reach, -reach}, {reach, reach, reach}};
}

void tell(CBaseWorld& world)
{
    world.broadcast(ui_world_selection_changed);
    world.update_all_views();
}

} // namespace

void select_world_objects(CBaseWorld& world, const std::vector<WorldObject*>& objects)
{
    world.selection().clear();
    for (const WorldObject* object : objects)
        world.selection().add(object);
    tell(world);
}

WorldObject* add_world_object(CBaseWorld& world, WorldType type, const QVector3D& ground)
{
    WorldObject* object = nullptr;
    {
        const UserAction action(world.document().journal(), lang(u"添加物体", u"Add Object"));
        object = world.objects().create(type);
        if (!object)
            return nullptr;
        object->set_place(ground + QVector3D(0, height_of(type), 0));
        object->set_points({{-2, 0, 0}, {0, 0, -1.5f}, {2, 0, 0}});
    }
    select_world_objects(world, {object});
    return object;
}

void duplicate_world_objects(CBaseWorld& world)
{
    std::vector<WorldObject*> copies;
    {
        const UserAction action(world.document().journal(), lang(u"复制物体", u"Duplicate Objects"));
        copies = world.objects().duplicate(world.selection().objects());
        for (WorldObject* copy : copies)
            copy->set_place(copy->place() + beside);
    }
    if (!copies.empty())
        select_world_objects(world, copies);
}

void remove_world_objects(CBaseWorld& world)
{
    world.objects().remove(world.selection().objects());
    tell(world);
}

WorldBounds bounds_of(const WorldObject& object)
{
    const QMatrix4x4 transform = object.transform();
    const std::vector<QVector3D> corners = corners_of(object);
    if (corners.empty())
        return {object.place(), 0};
    QVector3D low = transform.map(corners.front());
    QVector3D high = low;
    for (const QVector3D& corner : corners) {
        const QVector3D point = transform.map(corner);
        for (int part = 0; part < 3; ++part) {
            low[part] = std::min(low[part], point[part]);
            high[part] = std::max(high[part], point[part]);
        }
    }
    return {(low + high) / 2, (high - low).length() / 2};
}

bool frame_world_objects(CBaseWorld& world)
{
    const std::vector<WorldObject*> objects = world.selection().objects();
    if (objects.empty())
        return false;
    QVector3D centre;
    for (const WorldObject* object : objects)
        centre += bounds_of(*object).centre / float(objects.size());
    float radius = least_radius;
    for (const WorldObject* object : objects) {
        const WorldBounds bounds = bounds_of(*object);
        radius = std::max(radius, (bounds.centre - centre).length() + bounds.radius);
    }
    world.camera().frame(centre, double(radius));
    world.update_all_views();
    return true;
}

} // namespace tarn
