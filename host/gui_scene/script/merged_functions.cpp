#include "merged_functions.h"

#include "core/model_object.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_event.h"
#include "gui_scene/gui_plug_scene.h"

#include <QRegularExpression>
#include <QSet>

namespace tarn {

namespace {

using Names = QHash<QString, QString>;

/// What functions that were made for an event are called with the new ids, by their old names.
Names names_after_ids(const SceneSnapshot& content, const CGuiPlugScene& scene, const QHash<quint32, quint32>& issued)
{
    QHash<quint32, quint32> old;
    for (auto id = issued.begin(); id != issued.end(); ++id)
        old.insert(id.value(), id.key());
    Names names;
    for (const StatePtr& state : content.objects[scene.events().event_kind().place]) {
        const auto& event = SceneSnapshot::as<EventState>(state);
        const QString name = CEventManager::new_function_name(old.value(event.control.id), event.type);
        if (event.function == name)
            names.insert(name, CEventManager::new_function_name(event.control.id, event.type));
    }
    for (const StatePtr& dialog : content.objects[scene.gui_core().dialog_kind().place])
        for (const EventKind& kind : event_kinds())
            if (kind.control_types == 0)
                names.insert(CDXUTDialog::get_func_str(old.value(dialog->id), kind.type),
                             CDXUTDialog::get_func_str(dialog->id, kind.type));
    return names;
}

QString free_name(const QString& wanted, const CConfigScene& scene_functions, const QSet<QString>& used)
{
    QString name = wanted;
    for (int number = 2; used.contains(name) || scene_functions.find_function(name); ++number) {
        const QString suffix = QLatin1Char('_') + QString::number(number);
        name = cut_text(wanted, IFunc::max_name - int(suffix.size())) + suffix;
    }
    return name;
}

/// `text` with the names that stand in it as literals exchanged.
QString with_new_names(const QString& text, const Names& names)
{
    static const QRegularExpression literal(QStringLiteral(R"(("|')([^"'\\\n]+)\1)"));
    QString result;
    qsizetype done = 0;
    for (auto match = literal.globalMatch(text); match.hasNext();) {
        const auto found = match.next();
        const auto name = names.constFind(found.captured(2));
        if (name == names.constEnd())
            continue;
        result += QStringView(text).mid(done, found.capturedStart(2) - done);
        result += *name;
        done = found.capturedEnd(2);
    }
    return result += QStringView(text).mid(done);
}

} // namespace

void merge_functions(SceneSnapshot& content, const CGuiPlugScene& scene, const QHash<quint32, quint32>& issued)
{
    const CConfigScene& present = scene.functions();
    auto& functions = content.objects[present.function_kind().place];
    Names names = names_after_ids(content, scene, issued);
    QSet<QString> used;
    std::erase_if(functions, [&](const StatePtr& state) {
        const auto& function = SceneSnapshot::as<FunctionState>(state);
        const QString wanted = names.value(function.name, function.name);
        const FuncPtr same = present.find_function(wanted);
        if (same && wanted == function.name && same->text() == function.text)
            return true;
        const QString name = free_name(wanted, present, used);
        used.insert(name);
        if (name != function.name)
            names.insert(function.name, name);
        return false;
    });
    follow_function_names(content, present.function_kind().place, names);
}

void follow_function_names(SceneSnapshot& content, std::size_t functions, const QHash<QString, QString>& names)
{
    if (names.isEmpty())
        return;
    for (StatePtr& state : content.objects[functions]) {
        auto& function = SceneSnapshot::edit<FunctionState>(state);
        function.name = names.value(function.name, function.name);
        function.text = with_new_names(function.text, names);
    }
    for (auto& list : content.objects)
        for (StatePtr& state : list)
            for (const FieldBase* field : state->fields().link_fields())
                if (field->rules().function && !field->is_default(*state))
                    field->rename(SceneSnapshot::edit<ObjectState>(state),
                                  [&](const QString& name) { return names.value(name, name); });
}

} // namespace tarn
