// A clipboard's text, of objects or of a look: it is pasted as one step or changes nothing.

#include "fuzz.h"

#include "engine/base_world.h"
#include "gui_core/dxut_control.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/package_writer.h"
#include "tools/control_clipboard.h"
#include "tools/gui_tools.h"
#include "tools/look_clipboard.h"

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
    CGuiCore& core = scene.gui_core();
    CDXUTDialog* home = core.create_dialog({10, 10, 300, 200});
    CDXUTControl* control = core.create_control(DXUT_CONTROL_BUTTON, home, {0, 0, 50, 20});
    scene.document().forget_history();
    const QByteArray before = text_of(scene);
    const QByteArray text = input.rest();
    if (tarn::paste_text(scene, text))
        require(scene.journal().undo(), "what was pasted is a step");
    require(text_of(scene) == before, "the scene is as it was");
    core.SelectControl(control, false);
    (void)tarn::paste_look_text(scene, text);
    while (scene.journal().undo()) {} // A look may be the one that the control has.
    require(text_of(scene) == before, "the scene is as it was before the look");
}
