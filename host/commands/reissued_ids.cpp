#include "reissued_ids.h"

#include "core/field.h"
#include "gui_scene/script/merged_functions.h"
#include "script/config_scene.h"
#include "state_merge.h"

#include <QRegularExpression>

#include <algorithm>
#include <set>

namespace tarn {

namespace {

QHash<quint32, const ObjectState*> states_of(const SceneSnapshot& scene)
{
    QHash<quint32, const ObjectState*> found;
    for (const auto& states : scene.objects)
        for (const StatePtr& state : states)
            found.insert(state->id, state.constData());
    return found;
}

/// Whether both versions took over an object that somebody else had made.
bool is_one(const ObjectState* ours, const ObjectState* theirs)
{
    return ours && theirs && &ours->fields() == &theirs->fields() && ours->parent == theirs->parent
        && same_content(*ours, *theirs);
}

/// Functions that were made for an object's event or key bear its id: GUI_FUNC_12_OnClick.
QRegularExpressionMatch match_own_name(const QString& function)
{
    static const QRegularExpression own_name(QStringLiteral("^((?:GUI|GUI_DIALOG|TIMER)_FUNC_)(\\d+)(_.*)?$"));
    return own_name.match(function);
}

/// Whether the object belongs to one of those, or names one.
bool hangs_on(const ObjectState& state, const std::set<quint32>& ids)
{
    bool found = ids.contains(state.parent.id);
    for (const FieldBase* field : state.fields().link_fields())
        field->each_reference(state, [&](ObjectRef reference) { found |= ids.contains(reference.id); });
    if (const auto* function = dynamic_cast<const FunctionState*>(&state)) {
        const auto match = match_own_name(function->name);
        found |= match.hasMatch() && ids.contains(match.captured(2).toUInt());
    }
    return found;
}

QHash<QString, QString> names_after_ids(const std::vector<StatePtr>& functions, const IssuedIds& issued)
{
    QHash<QString, QString> names;
    for (const StatePtr& state : functions) {
        const QString& name = SceneSnapshot::as<FunctionState>(state).name;
        const auto match = match_own_name(name);
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
    const auto known = states_of(base);
    const auto taken = states_of(ours);
    const auto present = states_of(theirs);
    std::set<quint32> clashing; // In the order in which they were made.
    const auto look_at = [&](quint32 id) {
        const bool may_clash = taken.contains(id) || (id >= base.next_id && id < ours.next_id);
        if (!known.contains(id) && may_clash && !is_one(taken.value(id), present.value(id)))
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
    // What seemed to be one thing on both sides is not when it hangs on what is not.
    for (std::size_t before = 0; before != clashing.size();) {
        before = clashing.size();
        for (const auto& states : theirs.objects)
            for (const StatePtr& state : states)
                if (!known.contains(state->id) && taken.contains(state->id) && hangs_on(*state, clashing))
                    clashing.insert(state->id);
    }
    next = std::max({next, base.next_id, ours.next_id, theirs.next_id});
    IssuedIds issued;
    for (const quint32 id : clashing)
        issued.insert(id, next++);
    return issued;
}

void adopt_ids(const Document& document, const SceneSnapshot& base, const SceneSnapshot& known, SceneSnapshot& scene)
{
    const auto in_base = states_of(base);
    const auto present = states_of(scene);
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
