// The texts of a scene, with a zero byte between the parts: what can be read is written, read and written again with equal bytes.

#include "fuzz.h"

#include "engine/base_world.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/package_reader.h"
#include "gui_scene/package_writer.h"
#include "tools/gui_tools.h"

#include <algorithm>

namespace {

QByteArray written(const CGuiPlugScene& scene)
{
    const auto parts = tarn::package_texts(scene.document(), tarn::content_to_save(scene.gui_core()));
    QByteArrayList texts;
    for (const tarn::PackagePart& part : scene.document().parts()) {
        const auto found = std::find_if(parts.begin(), parts.end(),
                                        [&](const auto& text) { return text.first == QLatin1String(part.entry); });
        texts.append(found == parts.end() ? QByteArray() : found->second);
    }
    return texts.join('\0');
}

bool read(CGuiPlugScene& scene, const QByteArray& text)
{
    const QByteArrayList given = text.split('\0');
    QMap<QString, QByteArray> texts;
    for (std::size_t i = 0; i < scene.document().parts().size(); ++i)
        texts.insert(QLatin1String(scene.document().parts()[i].entry), given.value(qsizetype(i)));
    auto content = tarn::read_content("{\"format\":1}", texts, {}, scene.gui_core());
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
    const QByteArray first = written(scene);
    require(read(scene, first), "what was written can be read");
    require(written(scene) == first, "what was read is written with equal bytes");
}
