#include "world_edit.h"

#include "base_world.h"
#include "core/language.h"
#include "scene_selection.h"
#include "world/world_scene.h"
#include "world_models.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr QVector3D beside(0.5f, 0, 0.5f); ///< from an object to its copy, metres
constexpr float least_radius = 0.5f;       ///< metres; nothing is framed nearer

/// Of a new object over the ground, metres.
float height_of(WorldType type)
{
    return type == WorldType::Camera ? 1.5f : type == WorldType::Panel ? 1.f : 0.f;
}

/// In the object's own coordinates.
std::vector<QVector3D> corners_of(const CBaseWorld& world, const WorldObject& object)
{
    if (object.type() == WorldType::Path)
        return object.shape().corners();
    if (const auto* panel = dynamic_cast<const PanelState*>(&object.object_state())) {
        const float x = panel->width / 2;
        const float y = panel->height / 2;
        return {{-x, -y, 0}, {x, y, 0}};
    }
    if (object.type() == WorldType::Camera)
        return {-QVector3D(camera_reach, camera_reach, camera_reach), {camera_reach, camera_reach, camera_reach}};
    const ModelBox box = model_box(world, object);
    std::vector<QVector3D> corners;
    for (int corner = 0; corner < 8; ++corner)
        corners.emplace_back((corner & 1 ? box.high : box.low).x(), (corner & 2 ? box.high : box.low).y(),
                             (corner & 4 ? box.high : box.low).z());
    return corners;
}

WorldType type_of(const Model& model)
{
    switch (model.kind()) {
    case ModelKind::Animated: return WorldType::AnimatedModel;
    case ModelKind::Skinned: return WorldType::Skeleton;
    case ModelKind::Static: break;
    }
    return WorldType::Model;
}

/// Takes models out of the package that no object shows; recorded.
void release_models(CBaseWorld& world, const QSet<QString>& files)
{
    QSet<QString> unused = files;
    for (const WorldObject* object : world.objects().objects())
        unused.remove(object->file());
    for (const QString& file : std::as_const(unused))
        world.models().library().release(file);
}

/// One step of undo.
void set_for_all(CBaseWorld& world, const std::vector<WorldObject*>& objects, const QString& name,
                 bool (WorldObject::*set)(bool), bool on)
{
    {
        const UserAction action(world.document().journal(), name);
        for (WorldObject* object : objects)
            (object->*set)(on);
    }
    world.broadcast(ui_world_selection_changed);
}

} // namespace

void select_world_objects(CBaseWorld& world, const std::vector<WorldObject*>& objects)
{
    world.selection().clear();
    for (const WorldObject* object : objects)
        world.selection().add(object);
    world.broadcast(ui_world_selection_changed);
    world.update_all_views();
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

Result<WorldObject*> add_world_model(CBaseWorld& world, const QString& path, const QVector3D& ground,
                                     const Progress& progress)
{
    ModelLibrary& library = world.models().library();
    const auto import = library.import(path, progress);
    if (!import)
        return import.status();
    const Model& model = *import.value().model;
    WorldObject* object = nullptr;
    {
        const UserAction action(world.document().journal(), lang(u"添加物体", u"Add Object"));
        object = world.objects().create(type_of(model), QFileInfo(path).completeBaseName());
        if (!object)
            return Status::error(lang(u"物体太多，请先删除一些。", u"There are too many objects; delete some first."));
        library.take(import.value());
        object->set_file(import.value().file);
        if (!model.data().actions.empty())
            object->set_action(model.data().actions.front().name);
        object->set_place(ground);
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
    const UserAction action(world.document().journal(), lang(u"删除物体", u"Delete Objects"));
    QSet<QString> files;
    for (const WorldObject* object : world.selection().objects())
        files.insert(object->file());
    world.objects().remove(world.selection().objects());
    release_models(world, files);
}

void show_world_objects(CBaseWorld& world, const std::vector<WorldObject*>& objects, bool on)
{
    set_for_all(world, objects, on ? lang(u"显示物体", u"Show Objects") : lang(u"隐藏物体", u"Hide Objects"),
                &WorldObject::set_visible, on);
}

void lock_world_objects(CBaseWorld& world, const std::vector<WorldObject*>& objects, bool on)
{
    set_for_all(world, objects, on ? lang(u"锁定物体", u"Lock Objects") : lang(u"解锁物体", u"Unlock Objects"),
                &WorldObject::set_locked, on);
}

ModelBox model_box(const CBaseWorld& world, const WorldObject& object)
{
    const ModelBox box = world.models().box(object);
    return box.is_empty() ? ModelBox{{-0.5f, 0, -0.5f}, {0.5f, 1, 0.5f}} : box;
}

void wait_for_models(CBaseWorld& world)
{
    for (const WorldObject* object : world.objects().objects())
        (void)world.models().pose(*object);
    world.models().library().finish();
}

WorldBounds bounds_of(const CBaseWorld& world, const WorldObject& object)
{
    const QMatrix4x4 transform = object.transform();
    const std::vector<QVector3D> corners = corners_of(world, object);
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
        centre += bounds_of(world, *object).centre / float(objects.size());
    float radius = least_radius;
    for (const WorldObject* object : objects) {
        const WorldBounds bounds = bounds_of(world, *object);
        radius = std::max(radius, (bounds.centre - centre).length() + bounds.radius);
    }
    world.camera().frame(centre, double(radius));
    world.update_all_views();
    return true;
}

} // namespace tarn
