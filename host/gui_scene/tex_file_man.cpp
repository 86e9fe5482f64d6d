#include "tex_file_man.h"

#include "engine/base_world.h"
#include "engine/world_models.h"
#include "gui_core/gui_core.h"
#include "gui_core/texture_name.h"
#include "picture_file.h"
#include "world/world_scene.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include <algorithm>

QString CTexFileMan::find_of_panels(const QByteArray& encoded, const QString& file_name) const
{
    const auto& files = m_core.document().files();
    QString of_that_name;
    for (const tarn::WorldObject* object : m_world.objects().objects()) {
        const auto* panel = dynamic_cast<const tarn::PanelState*>(&object->object_state());
        if (!panel || panel->picture.isEmpty())
            continue;
        if (!encoded.isEmpty() && files.value(tarn::texture_entry(panel->picture)) == encoded)
            return panel->picture;
        if (panel->picture.section(QLatin1Char('/'), -1) == file_name)
            of_that_name = panel->picture;
    }
    return of_that_name;
}

bool CTexFileMan::is_of_model(const QByteArray& encoded) const
{
    const QByteArray content = QCryptographicHash::hash(encoded, QCryptographicHash::Sha256);
    const auto& objects = m_world.objects().objects();
    return std::ranges::any_of(objects, [&](const tarn::WorldObject* object) {
        const tarn::ModelPose* pose = m_world.models().pose(*object);
        return pose && std::ranges::any_of(pose->model()->data().pictures, [&](const tarn::ModelPicture& picture) {
                   return picture.content == content;
               });
    });
}

QString CTexFileMan::find_tex_file_from_absolute_filename(const QString& path)
{
    const auto encoded = tarn::read_picture_file(path);
    const QString file_name = QFileInfo(path).fileName();
    const QString of_panels = find_of_panels(encoded ? encoded.value() : QByteArray(), file_name);
    if (!of_panels.isEmpty() || !encoded || !is_of_model(encoded.value()))
        return of_panels.isEmpty() ? QString() : of_panels;
    return m_core.add_texture(file_name, encoded.value());
}
