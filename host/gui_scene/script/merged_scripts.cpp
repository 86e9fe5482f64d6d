#include "merged_scripts.h"

#include "core/language.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_event.h"

#include <QRegularExpression>
#include <QSet>

#include <utility>

namespace tarn {

namespace {

using Names = QHash<QString, QString>;

/// What functions that were made for an event are called with the new ids, by their old names.
Names names_after_ids(const SceneContent& content, const std::vector<StatePtr>& dialog_states,
                      const QHash<quint32, quint32>& issued)
{
    Names names;
    for (const auto& event : content.events.events()) {
        const auto id = issued.find(event->control);
        if (id != issued.end() && event->function == CEventManager::new_function_name(event->control, event->type))
            names.insert(event->function, CEventManager::new_function_name(*id, event->type));
    }
    QSet<quint32> dialogs;
    for (const StatePtr& dialog : dialog_states)
        dialogs.insert(dialog->id);
    for (auto id = issued.begin(); id != issued.end(); ++id) {
        if (!dialogs.contains(id.value()))
            continue;
        for (const EventKind& kind : event_kinds())
            if (kind.control_types == 0)
                names.insert(CDXUTDialog::get_func_str(id.key(), kind.type),
                             CDXUTDialog::get_func_str(id.value(), kind.type));
    }
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

Status check_room(const SceneParts& scene, const SceneContent& content)
{
    if (scene.functions.functions().size() + content.functions->functions().size()
        > std::size_t(CConfigScene::max_functions))
        return Status::error(lang(u"合并后脚本函数过多（最多 %1 个）",
                                  u"With this package the scene would have too many script "
                                  u"functions (at most %1).")
                                 .arg(CConfigScene::max_functions));
    if (scene.events.events().size() + content.events.events().size() > CEventManager::max_events)
        return Status::error(lang(u"合并后事件过多（最多 %1 个）",
                                  u"With this package the scene would have too many events (at most %1).")
                                 .arg(CEventManager::max_events));
    return {};
}

MergedScripts merged_scripts(const CConfigScene& scene_functions, const SceneContent& content,
                             const std::vector<StatePtr>& dialogs, const QHash<quint32, quint32>& issued)
{
    MergedScripts merged;
    if (content.functions->functions().empty() && content.events.empty())
        return merged;
    Names names = names_after_ids(content, dialogs, issued);
    QSet<QString> used;
    std::vector<FuncPtr> added;
    for (const FuncPtr& function : content.functions->functions()) {
        const QString wanted = names.value(function->name(), function->name());
        const FuncPtr present = scene_functions.find_function(wanted);
        if (present && wanted == function->name() && present->text() == function->text())
            continue; // Both scenes have it.
        const QString name = free_name(wanted, scene_functions, used);
        used.insert(name);
        if (name != function->name())
            names.insert(function->name(), name);
        added.push_back(function);
    }
    for (const FuncPtr& function : added) {
        const QString name = names.value(function->name(), function->name());
        merged.functions.push_back(function->copy(name, with_new_names(function->text(), names)));
    }
    for (const auto& event : content.events.events()) {
        const auto id = issued.find(event->control);
        if (id == issued.end())
            continue;
        CGuiEvent copy = *event;
        copy.control = *id;
        copy.function = names.value(event->function, event->function);
        merged.events.push_back(std::move(copy));
    }
    merged.names = std::move(names);
    return merged;
}

} // namespace tarn
