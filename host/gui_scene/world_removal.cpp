#include "world_removal.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "engine/scene_selection.h"
#include "engine/world_edit.h"
#include "gui_plug_scene.h"
#include "picture_release.h"
#include "world/world_object.h"

namespace tarn {

void remove_world_selection(CGuiPlugScene& scene)
{
    CBaseWorld& world = *scene.world();
    {
        const UserAction action(scene.journal(), lang(u"删除物体", u"Delete Objects"));
        const PictureRelease release(scene.gui_core(), scene.functions(), world.selection().objects());
        remove_world_objects(world);
    }
    world.broadcast(ui_world_selection_changed);
}

} // namespace tarn
