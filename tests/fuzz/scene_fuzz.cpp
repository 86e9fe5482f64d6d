// The text of a scene: what can be read is written, read and written again with equal bytes.

#include "fuzz.h"

#include "engine/base_world.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/package_reader.h"
#include "gui_scene/package_writer.h"
#include "tools/gui_tools.h"

namespace {

bool read(CGuiPlugScene& scene, const QByteArray& text)
{
    auto content = tarn::read_content("{\"format\":1}", {{QStringLiteral("scene.json"), text}}, {}, scene.gui_core());
    if (!content)
        return false;
    scene.install(std::move(content.value()));
    scene.document().forget_history();
    return true;
}

} // namespace

void fuzz(FuzzInput input)
{
    CBaseWorld world;
    CGuiPlugScene scene;
    scene.set_tools(tarn::make_gui_tools);
    scene.on_world_created(&world);
    if (!read(scene, input.rest()))
        return;
    (void)scene.model().problems();
    const QByteArray written = tarn::scene_text(scene.parts());
    require(read(scene, written), "what was written can be read");
    require(tarn::scene_text(scene.parts()) == written, "what was read is written with equal bytes");
}
