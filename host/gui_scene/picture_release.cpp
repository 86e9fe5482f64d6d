#include "picture_release.h"
#include "core/authored.h"

#include "core/model_object.h"
#include "gui_core/gui_core.h"
#include "gui_core/texture_name.h"
#include "script/config_scene.h"

namespace tarn {

PictureRelease::~PictureRelease()
{
    const auto& files = m_core.document().files();
    m_shown.removeIf([&](const QString& name) { return !files.contains(texture_entry(name)); });
    if (!m_shown.isEmpty())
        keep_what_objects_show();
    if (!m_shown.isEmpty())
        keep_what_scripts_name();
    if (m_shown.isEmpty())
        return;
    m_core.document().edit_files([this](auto& held) {
        for (const QString& name : std::as_const(m_shown))
            held.remove(texture_entry(name));
    });
}

void PictureRelease::keep_what_objects_show()
{
    for (const ModelObject* object : m_core.document().objects()) {
        each_picture(Authored::state(*object), [this](const QString& name) { m_shown.remove(name); });
        if (m_shown.isEmpty())
            return;
    }
}

void PictureRelease::keep_what_scripts_name()
{
    for (const FuncPtr& function : m_functions.functions())
        m_shown.removeIf([&](const QString& name) { return function->text().contains(name); });
}

} // namespace tarn
