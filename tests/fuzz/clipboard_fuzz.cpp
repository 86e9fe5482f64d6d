// A clipboard's text: it is pasted as one step or changes nothing.

#include "fuzz.h"

#include "engine/base_world.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/package_writer.h"
#include "tools/control_clipboard.h"
#include "tools/gui_tools.h"

void fuzz(FuzzInput input)
{
    CBaseWorld world;
    CGuiPlugScene scene;
    scene.set_tools(tarn::make_gui_tools);
    scene.on_world_created(&world);
    scene.gui_core().create_dialog({10, 10, 300, 200});
    scene.document().forget_history();
    const QByteArray before = tarn::scene_text(scene.parts());
    if (tarn::paste_text(scene, input.rest()))
        require(scene.journal().undo(), "what was pasted is a step");
    // The ids that were given out are not given out again.
    const auto without_next_id = [](QByteArray text) { return text.remove(0, text.indexOf("\"root\"")); };
    require(without_next_id(tarn::scene_text(scene.parts())) == without_next_id(before), "the scene is as it was");
}
