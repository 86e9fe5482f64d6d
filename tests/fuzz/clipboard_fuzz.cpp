// A clipboard's text: it is pasted as one step or changes nothing.

#include "fuzz.h"

#include "engine/base_world.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/package_writer.h"
#include "tools/control_clipboard.h"
#include "tools/gui_tools.h"

namespace {

QByteArray text_of(const CGuiPlugScene& scene)
{
    QByteArray all;
    for (const auto& [entry, text] : tarn::package_texts(scene.document(), tarn::content_to_save(scene.gui_core())))
        if (entry != QLatin1String("manifest.json")) // Ids that were given out are not given out again.
            all += text;
    return all;
}

} // namespace

void fuzz(FuzzInput input)
{
    CBaseWorld world;
    CGuiPlugScene scene;
    scene.set_tools(tarn::make_gui_tools);
    scene.on_world_created(&world);
    scene.gui_core().create_dialog({10, 10, 300, 200});
    scene.document().forget_history();
    const QByteArray before = text_of(scene);
    if (tarn::paste_text(scene, input.rest()))
        require(scene.journal().undo(), "what was pasted is a step");
    require(text_of(scene) == before, "the scene is as it was");
}
