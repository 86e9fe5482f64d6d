#include "picture_release.h"

#include "core/model_object.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "gui_core/texture_name.h"
#include "script/config_scene.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace tarn {

namespace {

/// `text` as the end of a text in JSON.
QByteArray json_ending(const QString& text)
{
    return QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact).mid(2).chopped(1);
}

} // namespace

PictureRelease::~PictureRelease()
{
    const auto& files = m_core.core_state().files;
    m_shown.removeIf([&](const QString& name) { return !files.contains(texture_entry(name)); });
    if (!m_shown.isEmpty())
        keep_what_objects_show();
    if (!m_shown.isEmpty())
        keep_what_texts_name();
    if (m_shown.isEmpty())
        return;
    auto* without = static_cast<CoreState*>(m_core.base_state().clone());
    for (const QString& name : std::as_const(m_shown))
        without->files.remove(texture_entry(name));
    m_core.replace_state(StatePtr(without));
}

void PictureRelease::keep_what_objects_show()
{
    const auto keep = [this](const QString& name) { m_shown.remove(name); };
    each_picture(*m_core.GetRootDialog(), keep);
    walk(m_core.GetDialogs(), [&](const CDXUTDialog* dialog) { each_picture(*dialog, keep); });
    walk(m_core.controls(), [&](const CDXUTControl* control) {
        if (!m_shown.isEmpty())
            each_picture(*control, keep);
    });
}

/// Styles name pictures in their JSON, scripts in their source.
void PictureRelease::keep_what_texts_name()
{
    for (const QByteArray& style : m_core.core_state().styles) {
        // Read and written anew it has no escapes but those that it needs.
        const QByteArray json = QJsonDocument::fromJson('[' + style + ']').toJson(QJsonDocument::Compact);
        m_shown.removeIf([&](const QString& name) { return json.contains(json_ending(name)); });
    }
    for (const FuncPtr& function : m_functions.functions())
        m_shown.removeIf([&](const QString& name) { return function->text().contains(name); });
}

} // namespace tarn
