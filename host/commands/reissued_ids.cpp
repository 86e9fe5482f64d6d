#include "reissued_ids.h"

#include "core/field.h"
#include "gui_scene/script/merged_functions.h"
#include "script/config_scene.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <set>

namespace tarn {

namespace {

QSet<quint32> ids_of(const SceneSnapshot& scene)
{
    QSet<quint32> ids;
    for (const auto& states : scene.objects)
        for (const StatePtr& state : states)
            ids.insert(state->id);
    return ids;
}

/// Functions that were made for an object's event or key bear its id: GUI_FUNC_12_OnClick.
QHash<QString, QString> names_after_ids(const std::vector<StatePtr>& functions, const IssuedIds& issued)
{
    static const QRegularExpression own_name(QStringLiteral("^((?:GUI|GUI_DIALOG|TIMER)_FUNC_)(\\d+)(_.*)?$"));
    QHash<QString, QString> names;
    for (const StatePtr& state : functions) {
        const QString& name = SceneSnapshot::as<FunctionState>(state).name;
        const auto match = own_name.match(name);
        const auto fresh = match.hasMatch() ? issued.constFind(match.captured(2).toUInt()) : issued.constEnd();
        if (fresh != issued.constEnd())
            names.insert(name, match.captured(1) + QString::number(*fresh) + match.captured(3));
    }
    return names;
}

void follow(ObjectState& state, const IssuedIds& issued)
{
    for (const FieldBase* field : state.fields().link_fields())
        field->each_reference(state,
                              [&](ObjectRef& reference) { reference.id = issued.value(reference.id, reference.id); });
    state.parent.id = issued.value(state.parent.id, state.parent.id);
}

void renumber(SceneSnapshot& scene, const IssuedIds& issued)
{
    for (StatePtr& container : scene.containers)
        follow(SceneSnapshot::edit<ObjectState>(container), issued);
    for (auto& states : scene.objects)
        for (StatePtr& state : states) {
            auto& s = SceneSnapshot::edit<ObjectState>(state);
            follow(s, issued);
            s.id = issued.value(s.id, s.id);
        }
}

} // namespace

void reissue_ids(const Document& document, SceneSnapshot& scene, const IssuedIds& issued)
{
    if (issued.isEmpty())
        return;
    renumber(scene, issued);
    if (const ObjectKind* functions = document.kind("functions"))
        follow_function_names(scene, functions->place, names_after_ids(scene.objects[functions->place], issued));
}

IssuedIds ids_to_reissue(const SceneSnapshot& base, const SceneSnapshot& ours, const SceneSnapshot& theirs,
                         quint32& next)
{
    const QSet<quint32> known = ids_of(base);
    const QSet<quint32> taken = ids_of(ours);
    std::set<quint32> clashing; // In the order in which they were made.
    const auto look_at = [&](quint32 id) {
        if (!known.contains(id) && (taken.contains(id) || (id >= base.next_id && id < ours.next_id)))
            clashing.insert(id);
    };
    for (const auto& states : theirs.objects)
        for (const StatePtr& state : states) {
            look_at(state->id);
            // What names something that is gone must not name something of ours.
            for (const FieldBase* field : state->fields().link_fields())
                field->each_reference(std::as_const(*state), [&](ObjectRef reference) {
                    if (reference.id >= base.next_id && reference.id <= Document::max_id)
                        look_at(reference.id);
                });
        }
    next = std::max({next, base.next_id, ours.next_id, theirs.next_id});
    IssuedIds issued;
    for (const quint32 id : clashing)
        issued.insert(id, next++);
    return issued;
}

void adopt_ids(const Document& document, const SceneSnapshot& base, const SceneSnapshot& known, SceneSnapshot& scene)
{
    const QSet<quint32> in_base = ids_of(base);
    const QSet<quint32> present = ids_of(scene);
    IssuedIds adopted;
    for (const ObjectKind& kind : document.kinds()) {
        if (!kind.unique_key)
            continue;
        QHash<QString, quint32> ids;
        for (const StatePtr& state : known.objects[kind.place])
            if (!present.contains(state->id))
                ids.insert(kind.unique_key(*state), state->id);
        if (ids.isEmpty())
            continue;
        for (const StatePtr& state : scene.objects[kind.place])
            if (const auto found = ids.constFind(kind.unique_key(*state));
                found != ids.constEnd() && !in_base.contains(state->id))
                adopted.insert(state->id, *found);
    }
    if (!adopted.isEmpty())
        renumber(scene, adopted);
}

} // namespace tarn
