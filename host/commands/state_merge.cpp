#include "state_merge.h"

#include "animation/animation_states.h"
#include "core/json_writer.h"
#include "gui_core/dialog_state.h"
#include "gui_core/style_state.h"
#include "key_merge.h"

#include <algorithm>
#include <set>

namespace tarn {

namespace {

constexpr qsizetype longest_object = 2000; ///< UTF-16 units of an object that a conflict quotes

QString text_of(JsonWriter& writer)
{
    return QString::fromStdString(writer.text());
}

QString key_json(const std::optional<Key>& key)
{
    return key ? json_of(*key) : QString();
}

template <class T>
QString entry_json(const QMap<QString, T>& map, const QString& name)
{
    const auto found = map.find(name);
    if (found == map.end())
        return {};
    if constexpr (std::is_same_v<T, QByteArray>) {
        return QString::fromUtf8(*found);
    } else {
        JsonWriter writer;
        writer.value(*found);
        return text_of(writer);
    }
}

/// Numbers that are a set: those that neither version took out, and those that either put in.
NumberList merge_sets(const NumberList& base, const NumberList& ours, const NumberList& theirs)
{
    std::set<double> merged(ours.begin(), ours.end());
    for (const double number : base)
        if (!theirs.contains(number))
            merged.erase(number);
    for (const double number : theirs)
        if (!base.contains(number))
            merged.insert(number);
    return NumberList(merged.begin(), merged.end());
}

QMap<QString, QByteArray> as_map(const ObjectState* state)
{
    QMap<QString, QByteArray> map;
    if (state)
        for (const auto& [name, json] : state->unknown)
            map.insert(name, json);
    return map;
}

/// Merges the fields of one object.
class FieldMerger {
public:
    FieldMerger(const StateVersions& versions, const SettleConflict& settle)
        : m_base(versions.base),
          m_ours(*versions.ours),
          m_theirs(*versions.theirs),
          m_settle(settle),
          m_merged(m_ours.clone())
    {
    }

    StatePtr merged()
    {
        for (const FieldBase* field : m_ours.fields())
            if (is_content(*field))
                merge(*field);
        merge_unknown();
        if (m_is_mixed)
            m_merged->settle(WrittenFields::whole());
        return m_merged;
    }

private:
    void merge(const FieldBase& field)
    {
        if (field.same(m_ours, m_theirs) || (m_base && field.same(m_theirs, *m_base)))
            return;
        m_is_mixed = true;
        if (m_base && field.same(m_ours, *m_base)) {
            field.copy(m_theirs, *m_merged);
            return;
        }
        if (merge_parts(field))
            return;
        const QString base = m_base ? json_of(field, *m_base) : QString();
        if (settle(field, {}, base, json_of(field, m_ours), json_of(field, m_theirs)) == MergeSide::Theirs)
            field.copy(m_theirs, *m_merged);
    }
    MergeSide settle(const FieldBase& field, const QString& part, const QString& base, const QString& ours,
                     const QString& theirs)
    {
        return m_settle(
            {.field = QString::fromLatin1(field.name()), .part = part, .base = base, .ours = ours, .theirs = theirs});
    }

    /// False for a value that is all of one piece.
    bool merge_parts(const FieldBase& field)
    {
        if (field.key() == key<&VarState::keys>)
            return merge_tracks(field);
        const Value base = m_base ? field.get(*m_base) : field.default_value();
        const Value ours = field.get(m_ours);
        const Value theirs = field.get(m_theirs);
        if (std::holds_alternative<TextMap>(ours))
            return merge_entries<TextMap>(field, base, ours, theirs);
        if (std::holds_alternative<NumberMap>(ours))
            return merge_entries<NumberMap>(field, base, ours, theirs);
        if (field.key() != key<&CoreState::vertical_guides> && field.key() != key<&CoreState::horizontal_guides>)
            return false;
        const auto list = [](const Value& value) {
            const auto* numbers = std::get_if<NumberList>(&value);
            return numbers ? *numbers : NumberList();
        };
        return field.set(*m_merged, merge_sets(list(base), list(ours), list(theirs))).ok();
    }
    template <class Map>
    bool merge_entries(const FieldBase& field, const Value& base, const Value& ours, const Value& theirs)
    {
        const auto* before = std::get_if<Map>(&base);
        const Map from = before ? *before : Map();
        const Map& a = std::get<Map>(ours);
        const Map& b = std::get<Map>(theirs);
        const Map merged = merge_maps<typename Map::mapped_type>(from, a, b, [&](const QString& name) {
            return settle(field, name, entry_json(from, name), entry_json(a, name), entry_json(b, name));
        });
        return field.set(*m_merged, merged).ok();
    }
    bool merge_tracks(const FieldBase& field)
    {
        const auto& ours = static_cast<const VarState&>(m_ours).keys;
        const auto& theirs = static_cast<const VarState&>(m_theirs).keys;
        const KeyTrack base = m_base ? static_cast<const VarState&>(*m_base).keys : KeyTrack(ours.type());
        if (base.type() != ours.type() || base.type() != theirs.type())
            return false;
        static_cast<VarState&>(*m_merged).keys = merge_keys(base, ours, theirs, [&](const KeyConflict& conflict) {
            return settle(field, QString::number(double(conflict.time), 'g', 9), key_json(conflict.base),
                          key_json(conflict.ours), key_json(conflict.theirs));
        });
        return true;
    }

    /// What this version of the program does not know.
    void merge_unknown()
    {
        if (m_ours.unknown == m_theirs.unknown || (m_base && m_theirs.unknown == m_base->unknown))
            return;
        const auto base = as_map(m_base);
        const auto ours = as_map(&m_ours);
        const auto theirs = as_map(&m_theirs);
        const auto merged = merge_maps<QByteArray>(base, ours, theirs, [&](const QString& name) {
            return m_settle({.field = name,
                             .base = entry_json(base, name),
                             .ours = entry_json(ours, name),
                             .theirs = entry_json(theirs, name)});
        });
        m_merged->unknown.clear();
        for (auto entry = merged.begin(); entry != merged.end(); ++entry)
            m_merged->unknown.append({entry.key(), entry.value()});
    }

    const ObjectState* m_base;
    const ObjectState& m_ours;
    const ObjectState& m_theirs;
    const SettleConflict& m_settle;
    StatePtr m_merged;
    bool m_is_mixed = false;
};

} // namespace

/// An atlas is saved beside the fields.
bool is_content(const FieldBase& field)
{
    return (!field.rules().derived || field.key() == key<&StyleState::atlas>)&&!field.rules().children
        && !(field.key() == key<&ObjectState::id>)&&!(field.key() == key<&ObjectState::parent>);
}

bool same_content(const ObjectState& a, const ObjectState& b)
{
    const auto is_same = [&](const FieldBase* field) { return !is_content(*field) || field->same(a, b); };
    return std::all_of(a.fields().begin(), a.fields().end(), is_same) && a.unknown == b.unknown;
}

QString json_of(const FieldBase& field, const ObjectState& state)
{
    JsonWriter writer;
    field.write(state, writer);
    return text_of(writer);
}

QString json_of(const ObjectState& state)
{
    JsonWriter writer;
    write_state(state, writer);
    QString all = text_of(writer);
    if (all.size() <= longest_object)
        return all;
    JsonWriter brief;
    brief.begin_object();
    brief.key("id");
    brief.value(state.id);
    if (const FieldBase* name = state.fields().find("name")) {
        brief.key("name");
        name->write(state, brief);
    }
    brief.end_object();
    return text_of(brief);
}

QString name_of(const ObjectState& state)
{
    const FieldBase* field = state.fields().find("name");
    if (!field)
        field = state.fields().find("text");
    const Value value = field ? field->get(state) : Value();
    const auto* text = std::get_if<QString>(&value);
    return text ? *text : QString();
}

QString known_name(const ObjectState& state, const std::function<const ObjectState*(quint32)>& find)
{
    QString name = name_of(state);
    for (const FieldBase* field : state.fields().link_fields())
        if (!field->rules().children && field->key() != key<&ObjectState::parent>)
            field->each_reference(state, [&](ObjectRef reference) {
                const ObjectState* named = name.isEmpty() ? find(reference.id) : nullptr;
                if (named)
                    name = name_of(*named);
            });
    return name;
}

StatePtr merge_states(const StateVersions& versions, const SettleConflict& settle)
{
    return FieldMerger(versions, settle).merged();
}

} // namespace tarn
