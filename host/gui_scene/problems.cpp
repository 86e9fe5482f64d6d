#include "problems.h"

#include "core/language.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_event.h"
#include "gui_core/texture_name.h"
#include "gui_plug_scene.h"
#include "picture_names.h"
#include "script/script_runtime.h"

#include <QHash>

namespace tarn {

namespace {

using Problems = ProblemFinder::Problems;

QString name_of(const ModelObject& object)
{
    const FieldBase* field = object.fields().find("name");
    const Value name = field ? object.authored_property(*field) : Value();
    const auto* text = std::get_if<QString>(&name);
    return text ? *text : QString();
}

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

void find_missing_pictures(ModelObject& object, const QString& name, const QMap<QString, QByteArray>& files,
                           Problems& problems)
{
    each_picture(object.authored_state(), [&](const QString& picture) {
        if (!files.contains(texture_entry(picture)))
            problems.push_back(
                {&object, name,
                 lang(u"图片 %1 不在文件包中。", u"The picture %1 is not in the package.").arg(picture)});
    });
}

/// Scripts find objects by name, and of several with one name only the first. One row for a name, at the second of them.
template <class List>
void find_shared_names(const List& objects, const QString& text, Problems& problems)
{
    QHash<QString, int> users;
    users.reserve(objects.size());
    for (const auto* object : objects)
        ++users[object->name()];
    QHash<QString, int> seen;
    for (auto* object : objects) {
        const QString name = object->name();
        const int count = users.value(name);
        if (count > 1 && !name.isEmpty() && ++seen[name] == 2)
            problems.push_back({object, name, text.arg(count)});
    }
}

} // namespace

void ProblemFinder::find_faulty_functions(const CConfigScene& functions, Problems& problems)
{
    QHash<quint64, QList<Fault>> faults;
    for (const FuncPtr& function : functions.functions()) {
        const auto known = m_faults.constFind(function->revision());
        QList<Fault>& found = faults[function->revision()];
        if (known != m_faults.constEnd())
            found = *known;
        else
            for (const ScriptError& error : ScriptRuntime::check(function->text()))
                found.append({error.line, error.message});
        for (const Fault& fault : std::as_const(found))
            problems.push_back({nullptr, function->name(),
                                lang(u"第 %1 行：%2", u"Line %1: %2").arg(fault.line).arg(fault.text), function->name(),
                                fault.line});
    }
    m_faults = std::move(faults);
}

Problems ProblemFinder::find(CGuiPlugScene& scene)
{
    Problems problems;
    find_broken_events(scene, problems);
    find_faulty_functions(scene.functions(), problems);
    const CGuiCore& core = scene.gui_core();
    const auto& files = core.document().files();
    for (ModelObject* object : core.document().objects())
        find_missing_pictures(*object, name_of(*object), files, problems);
    find_shared_names(core.GetDialogs(),
                      lang(u"%1 个窗口同名，脚本只能按名称找到最下层的一个。",
                           u"%1 dialogs have this name; by it scripts find only the lowest of them."),
                      problems);
    find_shared_names(core.controls(),
                      lang(u"%1 个控件同名，脚本只能按名称找到最先创建的一个。",
                           u"%1 controls have this name; by it scripts find only the one made first."),
                      problems);
    return problems;
}

} // namespace tarn
