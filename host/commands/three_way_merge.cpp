#include "three_way_merge.h"

#include "core/field.h"
#include "core/language.h"
#include "core/model_object.h"
#include "gui_scene/picture_names.h"
#include "reissued_ids.h"
#include "state_merge.h"

#include <QHash>

#include <algorithm>
#include <map>

namespace tarn {

namespace {

/// An object in the three versions, null where it is not there, and what becomes of it.
struct Versions {
    StatePtr base;
    StatePtr ours;
    StatePtr theirs;
    StatePtr merged{}; ///< null: it is not there afterwards

    const StatePtr& in(MergeSide side) const { return side == MergeSide::Ours ? ours : theirs; }
    const StatePtr& any() const { return merged ? merged : ours ? ours : theirs ? theirs : base; }
};

MergeSide other(MergeSide side)
{
    return side == MergeSide::Ours ? MergeSide::Theirs : MergeSide::Ours;
}

bool is_same_class(const ObjectState& a, const ObjectState& b)
{
    if (&a.fields() != &b.fields())
        return false;
    const FieldBase* type = a.fields().find("type");
    return !type || type->rules().derived || type->same(a, b);
}

class Merge {
public:
    Merge(const Document& document, SceneSnapshot base, SceneSnapshot ours, SceneSnapshot theirs,
          const ChooseSide& choose)
        : m_document(document),
          m_base(std::move(base)),
          m_ours(std::move(ours)),
          m_theirs(std::move(theirs)),
          m_choose(choose)
    {
    }

    Result<MergedScene> run()
    {
        if (auto status = match(); !status)
            return status;
        merge_objects();
        keep_parents();
        drop_orphans();
        drop_doubles();
        merge_containers();
        order_children();
        if (auto status = collect(); !status)
            return status;
        merge_files();
        return std::move(m_result);
    }

private:
    using ById = std::map<quint32, Versions>;

    // Which objects are the same
    Status match()
    {
        quint32 next = 0;
        adopt_ids(m_document, m_base, m_base, m_ours);
        adopt_ids(m_document, m_base, m_base, m_theirs);
        reissue_ids(m_document, m_theirs, ids_to_reissue(m_base, m_ours, m_theirs, next));
        adopt_ids(m_document, m_base, m_ours, m_theirs);
        m_result.scene.next_id = std::max({next, m_base.next_id, m_ours.next_id, m_theirs.next_id});
        if (m_result.scene.next_id > Document::max_id)
            return Status::error(lang(u"编号已用完，无法合并。", u"There are no ids left for what is new."));
        m_objects.resize(m_document.kinds().size());
        for (std::size_t k = 0; k < m_objects.size(); ++k) {
            for (const StatePtr& state : m_base.objects[k])
                m_objects[k][state->id].base = state;
            for (const StatePtr& state : m_ours.objects[k])
                m_objects[k][state->id].ours = state;
            for (const StatePtr& state : m_theirs.objects[k])
                m_objects[k][state->id].theirs = state;
        }
        return check_kinds();
    }
    Status check_kinds()
    {
        for (std::size_t k = 0; k < m_objects.size(); ++k)
            for (const auto& [id, versions] : m_objects[k]) {
                const auto differs = [&](const StatePtr& a, const StatePtr& b) {
                    return a && b && !is_same_class(*a, *b);
                };
                const std::size_t known = m_kinds.value(id, k);
                m_kinds.insert(id, k);
                if (known != k || differs(versions.base, versions.ours) || differs(versions.base, versions.theirs)
                    || differs(versions.ours, versions.theirs))
                    return Status::error(lang(u"这些文件不是同一场景的版本：编号 %1 在其中是不同种类的对象。",
                                              u"These are not versions of one scene: the id %1 is an object of another "
                                              u"kind in one of them.")
                                             .arg(id));
            }
        return {};
    }

    // Objects
    void merge_objects()
    {
        for (std::size_t k = 0; k < m_objects.size(); ++k)
            for (auto& [id, versions] : m_objects[k])
                merge_object(k, versions);
    }
    void merge_object(std::size_t kind, Versions& versions)
    {
        if (versions.ours && versions.theirs) {
            versions.merged = merge_states(
                {versions.base.constData(), versions.ours.constData(), versions.theirs.constData()},
                [&](MergeConflict conflict) { return settle(kind, *versions.ours, std::move(conflict)); });
            choose_parent(kind, versions);
        } else if (const StatePtr& kept = versions.ours ? versions.ours : versions.theirs; !versions.base) {
            versions.merged = kept;
        } else if (kept && (!same_content(*kept, *versions.base) || !(kept->parent == versions.base->parent))) {
            versions.merged = versions.in(settle(
                kind, *versions.base,
                {.base = json_of(*versions.base), .ours = json(versions.ours), .theirs = json(versions.theirs)}));
        }
    }
    void choose_parent(std::size_t kind, Versions& versions)
    {
        const ObjectRef ours = versions.ours->parent;
        const ObjectRef theirs = versions.theirs->parent;
        ObjectRef chosen = ours;
        if (!(ours == theirs)) {
            const bool ours_moved = !versions.base || !(ours == versions.base->parent);
            const bool theirs_moved = !versions.base || !(theirs == versions.base->parent);
            const bool both = ours_moved && theirs_moved;
            if (both ? settle_parent(kind, versions) == MergeSide::Theirs : !ours_moved)
                chosen = theirs;
        }
        if (!(versions.merged->parent == chosen))
            SceneSnapshot::edit<ObjectState>(versions.merged).parent = chosen;
    }
    MergeSide settle_parent(std::size_t kind, const Versions& versions)
    {
        const auto parent = [](const StatePtr& state) { return state ? QString::number(state->parent.id) : QString(); };
        return settle(kind, *versions.any(),
                      {.field = QStringLiteral("parent"),
                       .base = parent(versions.base),
                       .ours = parent(versions.ours),
                       .theirs = parent(versions.theirs)});
    }
    static QString json(const StatePtr& state) { return state ? json_of(*state) : QString(); }

    // What hangs on what
    Versions* find(quint32 id)
    {
        const auto kind = m_kinds.constFind(id);
        return kind == m_kinds.constEnd() ? nullptr : &m_objects[*kind].at(id);
    }
    bool is_there(ObjectRef parent)
    {
        if (parent.id > Document::max_id)
            return true;
        const Versions* found = find(parent.id);
        return found && found->merged;
    }
    bool is_fixed(std::size_t kind) const { return m_document.kinds()[kind].fixed; }

    /// Where one side removed what the other side put something into, or kept something in: the chosen side has its way.
    void keep_parents()
    {
        for (std::size_t k = m_objects.size(); k-- > 0;)
            for (auto& [id, versions] : m_objects[k])
                if (versions.merged && !is_fixed(k) && !is_there(versions.merged->parent))
                    keep_parent(k, versions);
    }
    void keep_parent(std::size_t kind, Versions& versions)
    {
        Versions* parent = find(versions.merged->parent.id);
        if (!parent || (!parent->ours && !parent->theirs))
            return;
        const MergeSide keeper = parent->ours ? MergeSide::Ours : MergeSide::Theirs;
        if (settle_parent(kind, versions) == keeper)
            parent->merged = parent->in(keeper);
        else if (const StatePtr& state = versions.in(other(keeper)); state && is_there(state->parent))
            SceneSnapshot::edit<ObjectState>(versions.merged).parent = state->parent;
        else
            versions.merged.reset();
    }
    void drop_orphans()
    {
        for (std::size_t k = 0; k < m_objects.size(); ++k)
            for (auto& [id, versions] : m_objects[k])
                if (versions.merged && !is_fixed(k) && !is_there(versions.merged->parent))
                    versions.merged.reset();
    }
    /// Of two that would be the same thing, such as script keys at one time, the chosen side's stays.
    void drop_doubles()
    {
        for (const ObjectKind& kind : m_document.kinds()) {
            if (!kind.unique_key)
                continue;
            QHash<QString, Versions*> taken;
            for (auto& [id, versions] : m_objects[kind.place]) {
                if (!versions.merged)
                    continue;
                Versions*& present = taken[kind.unique_key(*versions.merged)];
                if (!present) {
                    present = &versions;
                    continue;
                }
                const bool is_ours = is_as_in(MergeSide::Ours, kind, versions);
                const Versions& in_ours = is_ours ? versions : *present;
                const Versions& in_theirs = is_ours ? *present : versions;
                const MergeSide side = settle(kind.place, *versions.merged,
                                              {.ours = json(in_ours.merged), .theirs = json(in_theirs.merged)});
                const bool replaces = is_as_in(side, kind, versions) && !is_as_in(side, kind, *present);
                Versions* gone = replaces ? present : &versions;
                present = replaces ? &versions : present;
                gone->merged.reset();
            }
        }
    }
    static bool is_as_in(MergeSide side, const ObjectKind& kind, const Versions& versions)
    {
        const StatePtr& state = versions.in(side);
        return state && kind.unique_key(*state) == kind.unique_key(*versions.merged);
    }

    void merge_containers()
    {
        for (std::size_t i = 0; i < m_document.parts().size(); ++i)
            m_result.scene.containers.push_back(
                merge_states({m_base.containers[i].constData(), m_ours.containers[i].constData(),
                              m_theirs.containers[i].constData()},
                             [this](MergeConflict conflict) { return settle_scene(std::move(conflict)); }));
    }

    // Order
    void order_children()
    {
        for (const ObjectKind& kind : m_document.kinds())
            for (const auto& [id, versions] : m_objects[kind.place])
                if (versions.merged && !kind.fixed)
                    m_members[{versions.merged->parent.id, kind.place}].push_back(id);
        for (const ObjectKind& kind : m_document.kinds()) {
            if (kind.fixed)
                continue;
            if (kind.container) {
                const std::size_t part = m_document.part_of(*kind.container);
                order(kind, {m_base.containers[part], m_ours.containers[part], m_theirs.containers[part]},
                      m_result.scene.containers[part], kind.container->id());
                continue;
            }
            for (std::size_t place = 0; place < kind.place; ++place)
                for (auto& [id, versions] : m_objects[place]) {
                    if (!kind.children_of(*versions.any()))
                        break; // One of a kind of parents stands for all.
                    if (versions.merged)
                        order(kind, versions, versions.merged, id);
                }
        }
    }
    void order(const ObjectKind& kind, const Versions& parents, StatePtr& parent, quint32 parent_id)
    {
        const auto list = [&](const StatePtr& state) {
            const IdList* ids = state ? kind.children_of(*state) : nullptr;
            return ids ? *ids : IdList();
        };
        OrderVersions lists{list(parents.base), list(parents.ours), list(parents.theirs), {}};
        if (const auto members = m_members.find({parent_id, kind.place}); members != m_members.end())
            lists.members = members->second;
        const auto comes_before = [&](const std::vector<quint32>& run, const std::vector<quint32>& second) {
            return content_of(kind.place, run) < content_of(kind.place, second);
        };
        auto merged = merge_order(lists, MergeSide::Ours, comes_before);
        if (merged.has_conflict) {
            MergeConflict conflict{.field = QString::fromLatin1(kind.key),
                                   .base = json_of(lists.base),
                                   .ours = json_of(lists.ours),
                                   .theirs = json_of(lists.theirs)};
            const MergeSide side = kind.container ? settle_scene(std::move(conflict))
                                                  : settle(m_kinds.value(parent_id), *parent, std::move(conflict));
            if (side == MergeSide::Theirs)
                merged = merge_order(lists, side, comes_before);
        }
        if (const IdList* present = kind.children_of(*parent); present && *present != merged.ids)
            *kind.children(SceneSnapshot::edit<ObjectState>(parent)) = std::move(merged.ids);
    }
    static QString json_of(const ObjectState& state) { return tarn::json_of(state); }
    static QString json_of(const IdList& ids)
    {
        QStringList numbers;
        for (const ObjectRef id : ids)
            numbers.append(QString::number(id.id));
        return QLatin1Char('[') + numbers.join(QLatin1Char(',')) + QLatin1Char(']');
    }

    /// What objects are, apart from ids and what hangs on these: the order of two new ones must not depend on which side
    /// is ours.
    QByteArray content_of(std::size_t kind, const std::vector<quint32>& run)
    {
        QByteArray all;
        for (const quint32 id : run)
            all += content_of(kind, id) + '\n';
        return all;
    }
    QByteArray content_of(std::size_t kind, quint32 id)
    {
        const ObjectState& state = *m_objects[kind].at(id).merged;
        QByteArray text = own_content(kind, state);
        for (const FieldBase* field : state.fields().link_fields())
            if (is_content(*field))
                field->each_reference(state, [&](ObjectRef reference) {
                    const Versions* target = find(reference.id);
                    if (!target || !target->merged)
                        return;
                    text += '@' + QByteArray(field->name()) + '=';
                    text += target->base ? QByteArray::number(reference.id) // The same in both versions.
                                         : own_content(m_kinds.value(reference.id), *target->merged);
                });
        for (std::size_t below = kind + 1; below < m_objects.size(); ++below) {
            const auto members = m_members.find({id, below});
            if (members == m_members.end())
                continue;
            QList<QByteArray> children;
            for (const quint32 child : members->second)
                children.append(content_of(below, child));
            std::sort(children.begin(), children.end());
            text += '{' + children.join('\n') + '}';
        }
        return text;
    }
    QByteArray own_content(std::size_t kind, const ObjectState& state) const
    {
        QByteArray text;
        for (const FieldBase* field : state.fields()) {
            bool has_reference = false;
            field->each_reference(state, [&](ObjectRef) { has_reference = true; });
            if (is_content(*field) && !has_reference && !field->is_default(state) && !is_made_name(kind, *field, state))
                text += QByteArray(field->name()) + '=' + tarn::json_of(*field, state).toUtf8() + ';';
        }
        return text;
    }
    /// A function that was made for an object is named after its id.
    bool is_made_name(std::size_t kind, const FieldBase& field, const ObjectState& state) const
    {
        const auto is_made = [](const QString& name) { return name.contains(QLatin1String("_FUNC_")); };
        if (field.rules().function && std::ranges::any_of(field.names(state), is_made))
            return true;
        return &m_document.kinds()[kind] == m_document.kind("functions") && std::string_view(field.name()) == "name"
            && is_made(name_of(state));
    }

    // The result
    Status collect()
    {
        auto& lists = m_result.scene.objects;
        lists.resize(m_objects.size());
        for (const ObjectKind& kind : m_document.kinds()) {
            const auto add_children = [&](const ObjectState& parent) {
                const IdList* ids = kind.children_of(parent);
                for (const ObjectRef child : ids ? *ids : IdList())
                    lists[kind.place].push_back(m_objects[kind.place].at(child.id).merged);
                return ids != nullptr;
            };
            if (kind.fixed)
                lists[kind.place].push_back(m_objects[kind.place].begin()->second.merged);
            else if (kind.container)
                add_children(*m_result.scene.containers[m_document.part_of(*kind.container)]);
            else
                for (std::size_t place = 0; place < kind.place; ++place)
                    for (const StatePtr& parent : lists[place])
                        if (!add_children(*parent))
                            break;
            if (lists[kind.place].size() > kind.most)
                return Status::error(lang(u"合并后%1过多（最多 %2 个）。",
                                          u"Merged there would be too many objects of the kind \"%1\" (at most %2).")
                                         .arg(lang(kind.chinese, kind.english))
                                         .arg(kind.most));
        }
        return {};
    }
    void merge_files()
    {
        SceneSnapshot& scene = m_result.scene;
        const auto settle_file = [&](const QString& name) {
            const auto size = [&](const SceneSnapshot& version) {
                const auto found = version.files.find(name);
                return found == version.files.end() ? QString() : QString::number(found->size());
            };
            return decide({.place = name,
                           .field = QStringLiteral("file"),
                           .base = size(m_base),
                           .ours = size(m_ours),
                           .theirs = size(m_theirs)});
        };
        scene.files = merge_maps<QByteArray>(m_base.files, m_ours.files, m_theirs.files, settle_file);
        // What is whole again in one of them is among the files.
        scene.damaged = merge_maps<QByteArray>(
            m_base.damaged, m_ours.damaged, m_theirs.damaged,
            [&](const QString& name) { return m_choose({.place = name, .field = QStringLiteral("file")}); });
        // One side may show what the other side, no longer showing it, took out.
        for (const auto& states : scene.objects)
            for (const StatePtr& state : states)
                for (const QString& entry : file_entries(*state))
                    if (!scene.files.contains(entry) && m_base.files.contains(entry))
                        scene.files.insert(entry, m_base.files.value(entry));
    }

    MergeSide settle(std::size_t kind, const ObjectState& state, MergeConflict conflict)
    {
        const ObjectKind& row = m_document.kinds()[kind];
        conflict.object = state.id;
        const auto find = [this](quint32 id) { return state_of(id); };
        conflict.place = QStringLiteral("%1 %2 \"%3\"")
                             .arg(lang(row.chinese, row.english))
                             .arg(state.id)
                             .arg(known_name(state, find));
        if (const ObjectState* parent = state_of(state.parent.id))
            conflict.place = lang(u"%1（属于 %2）", u"%1 of %2").arg(conflict.place, known_name(*parent, find));
        return decide(std::move(conflict));
    }
    /// Null for one that is in no version.
    const ObjectState* state_of(quint32 id) const
    {
        for (const auto& objects : m_objects)
            if (const auto found = objects.find(id); found != objects.end())
                return found->second.any().constData();
        return nullptr;
    }
    MergeSide settle_scene(MergeConflict conflict)
    {
        conflict.place = lang(u"场景", u"scene");
        return decide(std::move(conflict));
    }
    MergeSide decide(MergeConflict conflict)
    {
        m_result.conflicts.push_back(std::move(conflict));
        return m_choose(m_result.conflicts.back());
    }

    const Document& m_document;
    SceneSnapshot m_base;
    SceneSnapshot m_ours;
    SceneSnapshot m_theirs;
    const ChooseSide& m_choose;
    std::vector<ById> m_objects; ///< by kind
    QHash<quint32, std::size_t> m_kinds;
    std::map<std::pair<quint32, std::size_t>, std::vector<quint32>> m_members; ///< by parent and kind
    MergedScene m_result;
};

} // namespace

Result<MergedScene> merge_versions(const Document& document, SceneSnapshot base, SceneSnapshot ours,
                                   SceneSnapshot theirs, const ChooseSide& choose)
{
    return Merge(document, std::move(base), std::move(ours), std::move(theirs), choose).run();
}

Result<MergedScene> merge_versions(const Document& document, SceneSnapshot base, SceneSnapshot ours,
                                   SceneSnapshot theirs, MergeSide preferred)
{
    return merge_versions(document, std::move(base), std::move(ours), std::move(theirs),
                          [preferred](const MergeConflict&) { return preferred; });
}

} // namespace tarn
