#include "scene_changes.h"

#include "animation/animation_states.h"
#include "core/field.h"
#include "core/json_writer.h"
#include "core/model_object.h"
#include "key_merge.h"
#include "state_merge.h"

#include <algorithm>
#include <map>
#include <set>

namespace tarn {

namespace {

using What = ObjectChange::What;

template <class T>
QString json_of_value(const T& value)
{
    if constexpr (std::is_same_v<T, QByteArray>) {
        return QString::fromUtf8(value);
    } else {
        JsonWriter writer;
        writer.value(value);
        return QString::fromStdString(writer.text());
    }
}

template <class T>
void compare_maps(const QString& field, const QMap<QString, T>& before, const QMap<QString, T>& after,
                  std::vector<FieldChange>& changes)
{
    for (auto entry = before.begin(); entry != before.end(); ++entry) {
        const auto now = after.find(entry.key());
        if (now == after.end() || !(*now == *entry))
            changes.push_back(
                {field, entry.key(), json_of_value(*entry), now == after.end() ? QString() : json_of_value(*now)});
    }
    for (auto entry = after.begin(); entry != after.end(); ++entry)
        if (!before.contains(entry.key()))
            changes.push_back({field, entry.key(), {}, json_of_value(*entry)});
}

/// Keys that went and came with the same values, all by the same time, have moved.
void find_moved_keys(const std::vector<Key>& gone, const std::vector<Key>& come, KeyChanges& counts)
{
    const auto has_moved = [&] {
        for (std::size_t i = 0; i < gone.size(); ++i)
            if (!(gone[i].value == come[i].value)
                || qAbs(come[i].time - gone[i].time - (come[0].time - gone[0].time)) > 1e-3f)
                return false;
        return true;
    };
    if (!gone.empty() && gone.size() == come.size() && has_moved()) {
        counts.moved = int(gone.size());
        counts.offset = come[0].time - gone[0].time;
        return;
    }
    counts.removed = int(gone.size());
    counts.added = int(come.size());
}

void compare_tracks(const KeyTrack& before, const KeyTrack& after, ObjectChange& change)
{
    std::vector<Key> gone;
    std::vector<Key> come;
    const auto part = [](float time) { return QString::number(double(time), 'g', 9); };
    const QString field = QStringLiteral("keys");
    qsizetype b = 0;
    qsizetype a = 0;
    while (b < before.size() || a < after.size()) {
        if (a == after.size() || (b < before.size() && before.time(b) < after.time(a))) {
            gone.push_back(before.key(b++));
            change.fields.push_back({field, part(gone.back().time), json_of(gone.back()), {}});
        } else if (b == before.size() || after.time(a) < before.time(b)) {
            come.push_back(after.key(a++));
            change.fields.push_back({field, part(come.back().time), {}, json_of(come.back())});
        } else {
            const Key old = before.key(b++);
            const Key now = after.key(a++);
            if (old == now)
                continue;
            ++change.keys.changed;
            change.fields.push_back({field, part(now.time), json_of(old), json_of(now)});
        }
    }
    find_moved_keys(gone, come, change.keys);
}

void compare_field(const FieldBase& field, const ObjectState& before, const ObjectState& after, ObjectChange& change)
{
    const QString name = QString::fromLatin1(field.name());
    const Value old = field.get(before);
    const Value now = field.get(after);
    const auto* old_texts = std::get_if<TextMap>(&old);
    const auto* old_numbers = std::get_if<NumberMap>(&old);
    if (field.key() == key<&VarState::keys>)
        compare_tracks(static_cast<const VarState&>(before).keys, static_cast<const VarState&>(after).keys, change);
    else if (old_texts && std::holds_alternative<TextMap>(now))
        compare_maps(name, *old_texts, std::get<TextMap>(now), change.fields);
    else if (old_numbers && std::holds_alternative<NumberMap>(now))
        compare_maps(name, *old_numbers, std::get<NumberMap>(now), change.fields);
    else
        change.fields.push_back({name, {}, tarn::json_of(field, before), tarn::json_of(field, after)});
}

void compare_states(const ObjectState& before, const ObjectState& after, ObjectChange& change)
{
    for (const FieldBase* field : before.fields())
        if (is_content(*field) && !field->same(before, after))
            compare_field(*field, before, after, change);
    QMap<QString, QByteArray> old;
    QMap<QString, QByteArray> now;
    for (const auto& [name, json] : before.unknown)
        old.insert(name, json);
    for (const auto& [name, json] : after.unknown)
        now.insert(name, json);
    compare_maps(QStringLiteral("unknown"), old, now, change.fields);
}

class Comparison {
public:
    Comparison(const Document& document, const SceneSnapshot& before, const SceneSnapshot& after)
        : m_document(document), m_before(before), m_after(after)
    {
        QHash<quint32, const ObjectState*> states;
        for (const SceneSnapshot* scene : {&before, &after})
            for (const ObjectKind& kind : document.kinds())
                for (const StatePtr& state : scene->objects[kind.place]) {
                    m_parents.insert(state->id, state->parent.id);
                    m_changes.kinds.insert(state->id, &kind);
                    states.insert(state->id, state.constData());
                }
        for (const ObjectState* state : std::as_const(states))
            m_changes.names.insert(state->id, known_name(*state, [&](quint32 id) { return states.value(id); }));
    }

    SceneChanges run()
    {
        for (std::size_t part = 0; part < m_document.parts().size(); ++part) {
            ObjectChange change;
            const ObjectState& before = *m_before.containers[part];
            const ObjectState& after = *m_after.containers[part];
            compare_states(before, after, change);
            find_reordered(before, after, change);
            add_if_changed(std::move(change));
        }
        for (const ObjectKind& kind : m_document.kinds())
            compare_kind(kind);
        compare_files();
        return std::move(m_changes);
    }

private:
    quint32 owner_of(quint32 id) const
    {
        for (;;) {
            const quint32 parent = m_parents.value(id);
            if (parent == 0 || parent > Document::max_id)
                return id;
            id = parent;
        }
    }
    void add_if_changed(ObjectChange change)
    {
        if (change.what != What::Changed || !change.fields.empty() || change.has_other_parent
            || !change.reordered.empty())
            m_changes.objects.push_back(std::move(change));
    }
    void compare_kind(const ObjectKind& kind)
    {
        std::map<quint32, std::pair<const ObjectState*, const ObjectState*>> pairs;
        for (const StatePtr& state : m_before.objects[kind.place])
            pairs[state->id].first = state.constData();
        for (const StatePtr& state : m_after.objects[kind.place])
            pairs[state->id].second = state.constData();
        for (const auto& [id, pair] : pairs) {
            const auto& [before, after] = pair;
            ObjectChange change{.kind = &kind, .id = id, .name = m_changes.names.value(id), .owner = owner_of(id)};
            const bool other_class = before && after && &before->fields() != &after->fields();
            if (!before || other_class) {
                change.what = What::Added;
                change.fields.push_back({{}, {}, before ? tarn::json_of(*before) : QString(), tarn::json_of(*after)});
            } else if (!after) {
                change.what = What::Removed;
                change.fields.push_back({{}, {}, tarn::json_of(*before), {}});
            } else {
                compare_states(*before, *after, change);
                if (!(before->parent == after->parent)) {
                    change.has_other_parent = true;
                    change.fields.push_back({QStringLiteral("parent"),
                                             {},
                                             QString::number(before->parent.id),
                                             QString::number(after->parent.id)});
                }
                find_reordered(*before, *after, change);
            }
            add_if_changed(std::move(change));
        }
    }
    /// Whether those children that are in both stand in another order.
    void find_reordered(const ObjectState& before, const ObjectState& after, ObjectChange& change) const
    {
        for (const ObjectKind& kind : m_document.kinds()) {
            const IdList* old = kind.children_of(before);
            const IdList* now = kind.children_of(after);
            if (!old || !now || *old == *now)
                continue;
            const IdList was = common(*old, *now);
            const IdList is = common(*now, *old);
            if (was == is)
                continue;
            change.reordered.push_back(&kind);
            change.fields.push_back({QString::fromLatin1(kind.key), {}, json_of(was), json_of(is)});
        }
    }
    static IdList common(const IdList& list, const IdList& other)
    {
        std::set<quint32> there;
        for (const ObjectRef id : other)
            there.insert(id.id);
        IdList kept;
        for (const ObjectRef id : list)
            if (there.contains(id.id))
                kept.append(id);
        return kept;
    }
    static QString json_of(const IdList& ids)
    {
        QStringList numbers;
        for (const ObjectRef id : ids)
            numbers.append(QString::number(id.id));
        return QLatin1Char('[') + numbers.join(QLatin1Char(',')) + QLatin1Char(']');
    }
    void compare_files()
    {
        const auto& before = m_before.files;
        const auto& after = m_after.files;
        for (auto file = before.begin(); file != before.end(); ++file) {
            const auto now = after.find(file.key());
            if (now == after.end())
                m_changes.files.push_back({file.key(), What::Removed});
            else if (*now != *file)
                m_changes.files.push_back({file.key(), What::Changed});
        }
        for (auto file = after.begin(); file != after.end(); ++file)
            if (!before.contains(file.key()))
                m_changes.files.push_back({file.key(), What::Added});
    }

    const Document& m_document;
    const SceneSnapshot& m_before;
    const SceneSnapshot& m_after;
    QHash<quint32, quint32> m_parents;
    SceneChanges m_changes;
};

} // namespace

SceneChanges compare_scenes(const Document& document, const SceneSnapshot& before, const SceneSnapshot& after)
{
    return Comparison(document, before, after).run();
}

} // namespace tarn
