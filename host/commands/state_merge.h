#pragma once

#include "core/field.h"
#include "three_way_merge.h"

#include <QMap>

#include <functional>

namespace tarn {

/// One object, or a container, in three versions.
struct StateVersions {
    const ObjectState* base; ///< null for what both versions made
    const ObjectState* ours;
    const ObjectState* theirs;
};

/// Is told of the attribute `field`, or of the `part` of it, and answers which side is taken.
using SettleConflict = std::function<MergeSide(MergeConflict)>;

/// Merges the attributes of one object but for its id, its parent and its children.
StatePtr merge_states(const StateVersions& versions, const SettleConflict& settle);

/// Whether an object differs in what merge_states() merges.
bool same_content(const ObjectState& a, const ObjectState& b);
/// Whether the field is merged, and compared, with the object itself: not its id, its parent or its children.
bool is_content(const FieldBase& field);

QString json_of(const FieldBase& field, const ObjectState& state);
/// An object with all that it has, or its name alone where it is long.
QString json_of(const ObjectState& state);

/// What a person calls the object: its name or its text; "" for none.
QString name_of(const ObjectState& state);
/// The same; what has none is called as the first thing that it refers to, an event as its control. `find`: states by their
/// ids, null for none.
QString known_name(const ObjectState& state, const std::function<const ObjectState*(quint32)>& find);

/// Merges values by name. `choose(name)`: both versions changed the value there; it answers which side is taken.
template <class T>
QMap<QString, T> merge_maps(const QMap<QString, T>& base, const QMap<QString, T>& ours, const QMap<QString, T>& theirs,
                            const std::function<MergeSide(const QString&)>& choose)
{
    const auto value_in = [](const QMap<QString, T>& map, const QString& name) {
        const auto found = map.find(name);
        return found == map.end() ? nullptr : &*found;
    };
    const auto same = [](const T* a, const T* b) { return a == b || (a && b && *a == *b); };
    QMap<QString, T> merged = ours;
    const auto take_theirs = [&](const QString& name, const T* value) {
        value ? (void)merged.insert(name, *value) : (void)merged.remove(name);
    };
    const auto merge_one = [&](const QString& name) {
        const T* in_base = value_in(base, name);
        const T* in_ours = value_in(ours, name);
        const T* in_theirs = value_in(theirs, name);
        if (same(in_ours, in_theirs) || same(in_theirs, in_base))
            return;
        if (same(in_ours, in_base))
            return take_theirs(name, in_theirs);
        if (choose(name) == MergeSide::Theirs)
            take_theirs(name, in_theirs);
    };
    for (auto entry = theirs.begin(); entry != theirs.end(); ++entry)
        merge_one(entry.key());
    for (auto entry = base.begin(); entry != base.end(); ++entry)
        if (!theirs.contains(entry.key()))
            merge_one(entry.key());
    return merged;
}

} // namespace tarn
