#include "problems.h"

#include "core/language.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_event.h"
#include "gui_plug_scene.h"
#include "picture_names.h"
#include "script/script_runtime.h"

namespace tarn {

namespace {

using Problems = ProblemFinder::Problems;

constexpr int longest_value = 40; ///< UTF-16 units of a text that a message quotes

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

void find_missing_pictures(ModelObject& object, const QString& name, const CoreState& core, Problems& problems)
{
    each_picture(object, [&](const QString& picture) {
        const QString entry = texture_entry(picture);
        if (core.files.contains(entry))
            return;
        if (core.damaged.contains(entry))
            problems.push_back(
                {&object, name,
                 lang(u"图片 %1 已损坏，无法显示。", u"The picture %1 is damaged and not shown.").arg(picture)});
        else
            problems.push_back(
                {&object, name,
                 lang(u"图片 %1 不在文件包中。", u"The picture %1 is not in the package.").arg(picture)});
    });
}

void find_damaged_entries(const CoreState& core, Problems& problems)
{
    for (auto entry = core.damaged.begin(); entry != core.damaged.end(); ++entry)
        if (!core.files.contains(entry.key()))
            problems.push_back(
                {nullptr, entry.key(),
                 entry->isNull() ? lang(u"文件包中的这个条目已损坏，内容无法取得，保存后将不再存在。",
                                        u"This entry of the package is damaged beyond reach; a saved package lacks it.")
                                 : lang(u"文件包中的这个条目已损坏；保存时保持原样。",
                                        u"This entry of the package is damaged; saving keeps it as it is.")});
}

QString value_text(const Value& value)
{
    if (const auto* text = std::get_if<QString>(&value))
        return QLatin1Char('"') + cut_text(*text, longest_value) + QLatin1Char('"');
    if (const auto* whole = std::get_if<qint64>(&value))
        return QString::number(*whole);
    if (const auto* real = std::get_if<double>(&value))
        return QString::number(*real);
    return lang(u"列表", u"a list");
}

struct NamedObject {
    ModelObject* object = nullptr;
    QString name;
};

NamedObject find_object(CGuiCore& core, quint32 id)
{
    if (id == 0)
        return {&core, lang(u"界面", u"Interface")};
    if (CDXUTDialog* root = core.GetRootDialog(); root->id() == id)
        return {root, lang(u"屏幕", u"Screen")};
    if (CDXUTDialog* dialog = core.find_dialog(id))
        return {dialog, dialog->name()};
    if (CDXUTControl* control = core.find_control(id))
        return {control, control->name()};
    return {};
}

/// An attribute that the author has set since is none of them.
void find_held_values(CGuiCore& core, Problems& problems)
{
    for (const HeldValue& held : core.core_state().held) {
        const NamedObject found = find_object(core, held.object);
        const FieldBase* field = found.object ? found.object->fields().find(held.field.constData()) : nullptr;
        if (!field || field->get(found.object->base_state()) != held.kept)
            continue;
        const bool can_be_shown = held.object != 0 && found.object != core.GetRootDialog();
        problems.push_back({can_be_shown ? found.object : nullptr, found.name,
                            lang(u"文件中的属性 %1 为 %2，超出允许的范围，已改为 %3。",
                                 u"The file gave the property %1 as %2, which cannot be; it was made %3.")
                                .arg(QString::fromLatin1(held.field), value_text(held.given), value_text(held.kept))});
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
    CGuiCore& core = scene.gui_core();
    const CoreState& state = core.core_state();
    for (CDXUTDialog* dialog : core.GetDialogs())
        find_missing_pictures(*dialog, dialog->name(), state, problems);
    walk(core.controls(),
         [&](CDXUTControl* control) { find_missing_pictures(*control, control->name(), state, problems); });
    find_damaged_entries(state, problems);
    find_held_values(core, problems);
    return problems;
}

} // namespace tarn
