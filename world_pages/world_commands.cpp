#include "world_commands.h"

#include "engine/base_world.h"
#include "engine/camera_view.h"
#include "engine/scene_selection.h"
#include "engine/world_edit.h"
#include "gui_scene/world_removal.h"
#include "page_base/gui_child_dlg.h"
#include "world/world_scene.h"

#include <algorithm>

namespace tarn {

namespace {

std::vector<WorldObject*> selected(CBaseWorld& world)
{
    return world.selection().objects();
}
bool has_selection(CBaseWorld& world)
{
    return world.selection().get_last();
}
bool all_hidden(CBaseWorld& world)
{
    const auto objects = selected(world);
    return !objects.empty()
        && std::none_of(objects.begin(), objects.end(), [](const WorldObject* object) { return object->is_visible(); });
}
bool all_locked(CBaseWorld& world)
{
    const auto objects = selected(world);
    return !objects.empty()
        && std::all_of(objects.begin(), objects.end(), [](const WorldObject* object) { return object->is_locked(); });
}
bool some_hidden(CBaseWorld& world)
{
    const auto& objects = world.objects().objects();
    return std::any_of(objects.begin(), objects.end(), [](const WorldObject* object) { return !object->is_visible(); });
}
bool is_camera(CBaseWorld& world)
{
    const WorldObject* object = world.selection().get_last();
    return object && object->type() == WorldType::Camera;
}
bool looks_through(CBaseWorld& world)
{
    return is_camera(world) && world.camera_view().camera() == world.selection().get_last();
}

void find(CBaseWorld& world)
{
    frame_world_objects(world);
}
void look_through(CBaseWorld& world)
{
    world.camera_view().look_through(looks_through(world) ? nullptr : world.selection().get_last());
}
void hide(CBaseWorld& world)
{
    show_world_objects(world, selected(world), all_hidden(world));
}
void lock(CBaseWorld& world)
{
    lock_world_objects(world, selected(world), !all_locked(world));
}
void remove(CBaseWorld& world)
{
    if (CGuiPlugScene* scene = find_gui_scene(world))
        remove_world_selection(*scene);
}
void show_all(CBaseWorld& world)
{
    show_world_objects(world, world.objects().objects(), true);
}

constexpr WorldCommand commands[] = {
    {1, u"查找\tF", u"Find\tF", has_selection, find},
    {2, u"通过相机观察", u"Look Through the Camera", is_camera, look_through, false, looks_through},
    {3, u"再制\tCtrl+D", u"Duplicate\tCtrl+D", has_selection, duplicate_world_objects, true},
    {4, u"删除\tDel", u"Delete\tDel", has_selection, remove},
    {5, u"隐藏", u"Hidden", has_selection, hide, true, all_hidden},
    {6, u"锁定", u"Locked", has_selection, lock, false, all_locked},
    {7, u"全部显示", u"Show All", some_hidden, show_all},
};

} // namespace

std::span<const WorldCommand> world_commands()
{
    return commands;
}

} // namespace tarn
