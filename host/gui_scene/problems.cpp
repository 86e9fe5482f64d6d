#include "problems.h"

#include "core/field.h"
#include "core/language.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_event.h"
#include "gui_plug_scene.h"

#include <QHash>

namespace tarn {

namespace {

using Problems = std::vector<SceneModel::Problem>;

void find_broken_events(CGuiPlugScene& scene, Problems& problems)
{
    for (const auto& event : scene.events().events()) {
        CDXUTControl* control = scene.gui_core().find_control(event->control);
        const QString caption = event_caption(event->type);
        if (!control)
            problems.push_back({nullptr, lang(u"控件 %1", u"Control %1").arg(event->control),
                                lang(u"事件“%1”（函数 %2）的控件已被删除。",
                                     u"The control of the event \"%1\" (function %2) was deleted.")
                                    .arg(caption, event->function)});
        else if (!scene.functions().find_function(event->function))
            problems.push_back(
                {control, control->name(),
                 lang(u"事件“%1”的函数 %2 不存在。", u"The event \"%1\" calls the function %2, which does not exist.")
                     .arg(caption, event->function)});
    }
}

/// Looks for missing pictures in many objects, most of which share a few tables of attributes.
class MissingPictures {
public:
    MissingPictures(const QMap<QString, QByteArray>& files, Problems& problems) : m_files(files), m_problems(problems)
    {
    }

    void look_at(ModelObject& object, const QString& name)
    {
        for (const FieldBase* field : picture_fields(object.fields()))
            for (const QString& picture : field->pictures(object.base_state()))
                if (!m_files.contains(texture_entry(picture)))
                    m_problems.push_back(
                        {&object, name,
                         lang(u"图片 %1（%2）不在文件包中。", u"The picture %1 (%2) is not in the package.")
                             .arg(picture, QString::fromLatin1(field->name()))});
    }

private:
    const std::vector<const FieldBase*>& picture_fields(const FieldTable& table)
    {
        const auto known = m_fields.constFind(&table);
        if (known != m_fields.constEnd())
            return *known;
        std::vector<const FieldBase*> fields;
        for (const FieldBase* field : table)
            if (field->rules().picture)
                fields.push_back(field);
        return *m_fields.insert(&table, std::move(fields));
    }

    const QMap<QString, QByteArray>& m_files;
    Problems& m_problems;
    QHash<const FieldTable*, std::vector<const FieldBase*>> m_fields;
};

} // namespace

Problems find_problems(CGuiPlugScene& scene)
{
    Problems problems;
    find_broken_events(scene, problems);
    const CGuiCore& core = scene.gui_core();
    MissingPictures missing(core.core_state().files, problems);
    for (CDXUTDialog* dialog : core.GetDialogs())
        missing.look_at(*dialog, dialog->name());
    walk(core.controls(), [&](CDXUTControl* control) { missing.look_at(*control, control->name()); });
    return problems;
}

} // namespace tarn
