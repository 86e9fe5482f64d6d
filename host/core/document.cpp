#include "document.h"
#include "authored.h"

#include "language.h"
#include "model_object.h"

#include <QSet>

#include <algorithm>
#include <optional>
#include <utility>

namespace tarn {

namespace {

constexpr quint32 document_id = Document::max_id + 1;

/// For the length of a scope in which a step brings objects that are not recorded: the step has them all the same.
class UnrecordedQuietly {
public:
    UnrecordedQuietly(Journal& journal, bool recorded)
    {
        if (!recorded)
            m_off.emplace(journal);
    }

private:
    std::optional<RecordingOff> m_off;
};

} // namespace

const FieldTable& DocumentState::field_table()
{
    using S = DocumentState;
    static const FieldTable table(nullptr, field<S, &S::next_id>("next_id", 0u, read_only()));
    return table;
}

/// The document's own state as an object, so that the journal keeps it like all others.
class Document::Root final : public ModelObject {
public:
    explicit Root(Document& document) : ModelObject(document, new DocumentState) {}

    const char* class_name() const override { return "Document"; }
    bool is_attached() const override { return true; }
};

/// Exchanges all objects with those that were there before a whole content came. The lists of containers that are not
/// recorded go along: no entry of the step has them.
class Document::IndexSwap final : public Journal::SideEffect {
public:
    explicit IndexSwap(Document& document) : m_document(document)
    {
        for (const PackagePart& part : document.m_parts) {
            if (part.recorded)
                continue;
            StatePtr empty(part.container->fresh_state());
            empty->id = part.container->id();
            m_containers.emplace_back(part.container, std::move(empty));
        }
    }

    void exchange() override
    {
        for (const auto& object : m_document.unrecorded_objects())
            object->hang_on({});
        m_document.m_objects.swap(m_other);
        m_document.m_authored_stale = true;
        for (auto& [container, state] : m_containers)
            container->swap_state(state);
        for (const auto& object : m_document.unrecorded_objects())
            object->hang_on({object->kind()->container->id()});
        for (auto& [container, state] : m_containers)
            container->refresh();
        m_document.m_changes.touch_everything();
    }

private:
    Document& m_document;
    Index m_other;
    std::vector<std::pair<ModelObject*, StatePtr>> m_containers;
};

/// Lets objects that are not recorded go and come with the step that brought them. What the author removed or made anew
/// since stays so.
class Document::AddedUnrecorded final : public Journal::SideEffect {
public:
    explicit AddedUnrecorded(std::vector<std::shared_ptr<ModelObject>> objects) : m_objects(std::move(objects)) {}

    void exchange() override
    {
        if (m_objects.empty())
            return;
        Document& document = m_objects.front()->document();
        const RecordingOff off(document.journal());
        for (const ObjectKind& kind : document.kinds())
            m_present ? take_out(document, kind) : put_back(document, kind);
        m_present = !m_present;
    }

private:
    void take_out(Document& document, const ObjectKind& kind)
    {
        std::erase_if(m_objects, [&](const auto& object) { return object->kind() == &kind && !object->is_attached(); });
        document.detach(of_kind(kind));
    }
    void put_back(Document& document, const ObjectKind& kind)
    {
        const auto candidates = of_kind(kind);
        if (candidates.empty())
            return;
        QSet<QString> taken;
        if (kind.unique_key)
            for (const ModelObject* present : document.objects_of(kind))
                taken.insert(kind.unique_key(Authored::state(*present)));
        std::erase_if(m_objects, [&](const auto& object) {
            return object->kind() == &kind && kind.unique_key
                && taken.contains(kind.unique_key(Authored::state(*object)));
        });
        IdList& children = *kind.children(kind.container->edit_base());
        for (const auto& object : m_objects) {
            if (object->kind() != &kind)
                continue;
            document.m_objects.insert(object->id(), object);
            children.append(ObjectRef{object->id()});
            object->hang_on({kind.container->id()});
        }
        kind.container->written_children();
    }
    std::vector<ModelObject*> of_kind(const ObjectKind& kind) const
    {
        std::vector<ModelObject*> found;
        for (const auto& object : m_objects)
            if (object->kind() == &kind)
                found.push_back(object.get());
        return found;
    }

    std::vector<std::shared_ptr<ModelObject>> m_objects;
    bool m_present = true;
};

Document::Document() : m_journal(*this), m_root(std::make_unique<Root>(*this))
{
    add_container(*m_root);
}

Document::~Document()
{
    close();
}

void Document::close()
{
    before_free = nullptr;
    m_journal.on_changed = nullptr;
    m_journal.on_restored = nullptr;
    m_journal.clear();
    m_objects.clear();
    m_overlaid.clear();
    m_kinds.clear();
    m_authored_stale = true;
    m_parts.clear();
    m_permanent.clear();
    ++m_generation;
}

// Kinds ---------------------------------------------------------------------------------------------------------------

void Document::add_container(ModelObject& container)
{
    container.m_is_root = true;
    container.m_state.detach();
    container.m_state->id = document_id + quint32(m_parts.size()) + (&container == m_root.get() ? 0 : 1);
    m_permanent.emplace(container.id(), &container);
}

void Document::add_part(const PackagePart& part)
{
    add_container(*part.container);
    part.container->m_recorded = part.recorded;
    m_parts.push_back(part);
}

std::size_t Document::part_of(const ModelObject& container) const
{
    const auto found = std::find_if(m_parts.begin(), m_parts.end(),
                                    [&](const PackagePart& part) { return part.container == &container; });
    return std::size_t(found - m_parts.begin());
}

void Document::add_kind(ObjectKind kind)
{
    if (kind.fixed) {
        m_permanent.emplace(kind.fixed->id(), kind.fixed);
        kind.fixed->m_is_root = true;
    }
    kind.place = m_kinds.size();
    m_authored_stale = true;
    for (const PackagePart& part : m_parts)
        if (std::string_view(part.entry) == kind.part)
            kind.recorded = part.recorded;
    m_kinds.push_back(std::move(kind));
    if (m_kinds.back().fixed)
        m_kinds.back().fixed->m_kind = &m_kinds.back();
}

const ObjectKind* Document::kind(std::string_view key) const
{
    const auto found = std::find_if(m_kinds.begin(), m_kinds.end(),
                                    [key](const ObjectKind& kind) { return kind.key == key; });
    return found == m_kinds.end() ? nullptr : &*found;
}

// Objects -------------------------------------------------------------------------------------------------------------

ModelObject* Document::find(quint32 id) const
{
    if (const auto found = m_objects.constFind(id); found != m_objects.constEnd())
        return found->get();
    const auto found = m_permanent.find(id);
    return found == m_permanent.end() ? nullptr : found->second;
}

std::shared_ptr<ModelObject> Document::create(const ObjectKind& kind, StatePtr state)
{
    auto object = kind.make_object(std::move(state));
    object->m_kind = &kind;
    object->m_recorded = kind.recorded;
    m_objects.insert(object->id(), object);
    return object;
}

void Document::attach(ModelObject& object, ModelObject& parent, qsizetype place)
{
    IdList& children = *object.kind()->children(parent.edit_base());
    children.insert(std::min(place, children.size()), ObjectRef{object.id()});
    parent.written_children();
    object.edit_base().parent = {parent.id()};
    object.written(key<&ObjectState::parent>);
}

void Document::detach(std::span<ModelObject* const> objects)
{
    if (objects.empty())
        return;
    ModelObject& parent = *objects.front()->parent();
    const ObjectKind& kind = *objects.front()->kind();
    IdList& children = *kind.children(parent.edit_base());
    if (objects.size() == 1) {
        children.removeOne(ObjectRef{objects.front()->id()});
    } else {
        QSet<quint32> gone;
        gone.reserve(qsizetype(objects.size()));
        for (const ModelObject* object : objects)
            gone.insert(object->id());
        children.removeIf([&](ObjectRef child) { return gone.contains(child.id); });
    }
    for (ModelObject* object : objects)
        object->edit_base().parent = {};
    parent.written_children();
    for (ModelObject* object : objects)
        object->written(key<&ObjectState::parent>);
}

void Document::reorder(ModelObject& parent, const ObjectKind& kind, const IdList& order)
{
    *kind.children(parent.edit_base()) = order;
    parent.written_children();
}

/// All objects by their kinds: those that are part of the scene as it is shown, or as it is authored. For each parent its
/// children in their order.
Document::ByKind Document::collected(bool authored) const
{
    ByKind objects(m_kinds.size());
    const auto add_children = [&](const ObjectKind& kind, const ModelObject& parent) {
        const IdList* ids = kind.children_of(authored ? Authored::state(parent) : parent.shown_state());
        if (!ids)
            return false;
        for (const ObjectRef child : *ids)
            objects[kind.place].push_back(find(child.id));
        return true;
    };
    for (const ObjectKind& kind : m_kinds) {
        if (kind.fixed)
            objects[kind.place].push_back(kind.fixed);
        else if (kind.container)
            add_children(kind, *kind.container);
        else
            // Parents come before their children. One of a kind of parents stands for all.
            for (std::size_t place = 0; place < kind.place; ++place)
                for (const ModelObject* parent : objects[place])
                    if (!add_children(kind, *parent))
                        break;
    }
    return objects;
}

const Document::ByKind& Document::authored_objects() const
{
    if (std::exchange(m_authored_stale, false))
        m_authored = collected(true);
    Q_ASSERT(m_authored == collected(true));
    return m_authored;
}

std::vector<ModelObject*> Document::objects_of(const ObjectKind& kind) const
{
    return collected(false)[kind.place];
}

std::vector<std::shared_ptr<ModelObject>> Document::unrecorded_objects() const
{
    std::vector<std::shared_ptr<ModelObject>> objects;
    for (const ObjectKind& kind : m_kinds)
        if (!kind.recorded)
            for (const ObjectRef child : *kind.children_of(Authored::state(*kind.container)))
                objects.push_back(m_objects.value(child.id));
    return objects;
}

std::vector<ModelObject*> Document::objects() const
{
    std::vector<ModelObject*> all;
    for (const auto& some : collected(false))
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

// Whole contents ------------------------------------------------------------------------------------------------------

SceneSnapshot Document::snapshot() const
{
    SceneSnapshot all;
    all.next_id = next_id();
    all.files = state().files;
    all.damaged = state().damaged;
    for (const PackagePart& part : m_parts)
        all.containers.push_back(part.container->m_state);
    for (const auto& some : authored_objects()) {
        auto& states = all.objects.emplace_back();
        states.reserve(some.size());
        for (const ModelObject* object : some)
            states.push_back(object->m_state);
    }
    return all;
}

SceneSnapshot Document::empty_scene() const
{
    SceneSnapshot empty;
    for (const PackagePart& part : m_parts)
        empty.containers.emplace_back(part.container->fresh_state());
    empty.objects.resize(m_kinds.size());
    for (std::size_t k = 0; k < m_kinds.size(); ++k)
        if (m_kinds[k].fixed)
            empty.objects[k].emplace_back(m_kinds[k].fixed->fresh_state());
    return empty;
}

/// Makes the objects of states whose links are complete. That one came to hang on a container or a fixed object is
/// recorded: without it, undo could not tell that the object is gone.
std::vector<std::shared_ptr<ModelObject>> Document::make_objects(SceneSnapshot& content)
{
    std::vector<std::shared_ptr<ModelObject>> made;
    for (std::size_t k = 0; k < m_kinds.size(); ++k) {
        if (m_kinds[k].fixed)
            continue;
        m_objects.reserve(m_objects.size() + qsizetype(content.objects[k].size()));
        for (StatePtr& state : content.objects[k]) {
            const ObjectRef parent = state->parent;
            const bool is_told = m_kinds[k].recorded && m_permanent.contains(parent.id);
            if (is_told)
                SceneSnapshot::edit<ObjectState>(state).parent = {};
            const auto& object = made.emplace_back(create(m_kinds[k], std::move(state)));
            if (is_told)
                object->edit_base().parent = parent;
        }
    }
    for (const auto& object : made)
        object->refresh_links();
    for (const auto& object : made)
        object->state_changed();
    return made;
}

void Document::install(SceneSnapshot content)
{
    // What hangs on containers and fixed objects goes, and with it what hangs on that.
    for (const ObjectKind& kind : m_kinds) {
        if (!kind.recorded)
            continue;
        for (const auto& [id, parent] : m_permanent) {
            const IdList* ids = kind.children_of(Authored::state(*parent));
            if (!ids || (kind.container && kind.container != parent))
                continue;
            std::vector<ModelObject*> children;
            for (const ObjectRef child : *ids)
                children.push_back(find(child.id));
            detach(children);
        }
    }
    if (before_free)
        before_free();
    auto swap = std::make_unique<IndexSwap>(*this);
    swap->exchange();
    if (m_journal.recording())
        m_journal.add_side_effect(std::move(swap));
    else
        ++m_generation;
    swap.reset();

    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        const UnrecordedQuietly quiet(m_journal, m_parts[i].recorded);
        SceneSnapshot::edit<ObjectState>(content.containers[i]).id = m_parts[i].container->id();
        m_parts[i].container->replace_state(content.containers[i]);
    }
    for (std::size_t k = 0; k < m_kinds.size(); ++k)
        if (m_kinds[k].fixed)
            m_kinds[k].fixed->replace_state(content.objects[k].front());
    m_next_id = std::max(m_next_id, content.next_id);
    m_root->write<DocumentState>([&](DocumentState& s) {
        s.next_id = content.next_id;
        s.files = content.files;
        s.damaged = content.damaged;
        s.held = content.held;
    });
    make_objects(content);
    for (const auto& [id, object] : m_permanent)
        object->refresh();
}

void Document::leave_out_world(SceneSnapshot& content) const
{
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        if (m_parts[i].travels)
            continue;
        content.containers[i] = StatePtr(m_parts[i].container->fresh_state());
        if (const char* folder = m_parts[i].folder) {
            const auto is_part = [=](auto file) { return file.key().startsWith(QLatin1String(folder)); };
            content.files.removeIf(is_part);
            content.damaged.removeIf(is_part);
        }
        for (const ObjectKind& kind : m_kinds)
            if (std::string_view(kind.part) == m_parts[i].entry)
                content.objects[kind.place].clear();
    }
}

Status Document::check_room(const SceneSnapshot& content) const
{
    for (const ObjectKind& kind : m_kinds)
        if (kind.most != ObjectKind::unlimited
            && objects_of(kind).size() + content.objects[kind.place].size() > kind.most)
            return Status::error(lang(u"场景中的%1过多（最多 %2 个）。",
                                      u"The scene would have too many objects of the kind \"%1\" (at most %2).")
                                     .arg(lang(kind.chinese, kind.english))
                                     .arg(kind.most));
    return {};
}

void Document::append(SceneSnapshot content)
{
    m_next_id = std::max(m_next_id, content.next_id);
    m_root->write<DocumentState>([&](DocumentState& s) {
        s.next_id = std::max(s.next_id, m_next_id);
        s.files.insert(content.files);
        for (auto entry = content.damaged.begin(); entry != content.damaged.end(); ++entry)
            if (!s.damaged.contains(entry.key()))
                s.damaged.insert(entry.key(), entry.value());
    });
    for (std::size_t k = 0; k < m_kinds.size(); ++k) {
        if (!m_kinds[k].container || content.objects[k].empty())
            continue;
        const UnrecordedQuietly quiet(m_journal, m_kinds[k].recorded);
        IdList& children = *m_kinds[k].children(m_kinds[k].container->edit_base());
        for (StatePtr& state : content.objects[k]) {
            SceneSnapshot::edit<ObjectState>(state).parent = {m_kinds[k].container->id()};
            children.append(ObjectRef{state->id});
        }
    }
    auto unrecorded = make_objects(content);
    for (const PackagePart& part : m_parts)
        part.container->written_children();
    std::erase_if(unrecorded, [](const auto& object) { return object->kind()->recorded; });
    m_journal.add_side_effect(std::make_unique<AddedUnrecorded>(std::move(unrecorded)));
}

// Identifiers ---------------------------------------------------------------------------------------------------------

quint32 Document::ids_left() const
{
    const quint32 next = std::max(m_next_id, state().next_id);
    return next > max_id ? 0 : max_id - next + 1;
}

quint32 Document::take_id(bool recorded)
{
    if (ids_left() == 0)
        return 0;
    m_next_id = std::max(m_next_id, state().next_id);
    const quint32 id = m_next_id++;
    if (recorded)
        m_root->write<DocumentState>([this](DocumentState& s) { s.next_id = m_next_id; });
    return id;
}

/// What a package tells: no object that is part of the scene has an id from there on. Undo does not take back the making
/// of objects that are not recorded, so their ids count by themselves.
quint32 Document::next_id() const
{
    quint32 next = state().next_id;
    for (const auto& object : unrecorded_objects())
        next = std::max(next, object->id() + 1);
    return next;
}

const DocumentState& Document::state() const
{
    return static_cast<const DocumentState&>(Authored::state(*m_root));
}

void Document::edit_files(const std::function<void(QMap<QString, QByteArray>&)>& change)
{
    m_root->write<DocumentState>([&](DocumentState& s) { change(s.files); });
}

void Document::forget_history()
{
    m_journal.clear();
    m_next_id = next_id();
    drop_unreachable();
}

/// A removed object is reached by its own entry in a step, or through its parents.
void Document::drop_unreachable()
{
    QSet<const ModelObject*> kept;
    m_journal.each_kept([&](ModelObject& object) { kept.insert(&object); });
    const auto is_kept = [&](const ModelObject& object) {
        for (const ModelObject* o = &object; o; o = o->parent())
            if (o->m_is_root || kept.contains(o))
                return true;
        return false;
    };
    if (before_free)
        before_free();
    // All are asked before any goes: a child asks its parent.
    std::vector<std::shared_ptr<ModelObject>> gone;
    m_objects.removeIf([&](Index::iterator entry) {
        if (is_kept(**entry))
            return false;
        gone.push_back(*entry);
        return true;
    });
    if (!gone.empty())
        ++m_generation;
}

void Document::clear_shown()
{
    const auto overlaid = std::exchange(m_overlaid, {});
    for (ModelObject* object : overlaid)
        object->drop_shown();
    for (ModelObject* object : overlaid)
        object->refresh_links();
    for (ModelObject* object : overlaid)
        object->state_changed();
}

} // namespace tarn
