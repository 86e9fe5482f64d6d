#pragma once

#include "attribute_driver.h"
#include "journal.h"
#include "model_changes.h"
#include "object_kind.h"
#include "object_state.h"
#include "scene_snapshot.h"
#include "status.h"

#include <QHash>
#include <QMap>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <vector>

namespace tarn {

class ModelObject;

/// What a document keeps beside its objects.
struct DocumentState : StateOf<DocumentState> {
    quint32 next_id = 2; ///< ids from here on were never used; the root dialog has 1
    /// Entries of the package beside its parts, by name: pictures under "textures/", movies, and what this version does
    /// not know, which is kept.
    QMap<QString, QByteArray> files;
    /// Entries that could not be unpacked, as they lay in the package: they are written back so. A null one is beyond
    /// reach.
    QMap<QString, QByteArray> damaged;
    QList<HeldValue> held; ///< what was not as it should be when the scene was read

    static const FieldTable& field_table();
};

/// A scene as it is edited: its objects, found by id, the journal of what was done to them, and who is told of it.
///
/// The objects form a tree whose links are ids in their states: an object names its parent, and the parent lists its
/// children. The tree hangs on containers, which are always there: one for each part of a scene. Objects that were
/// removed stay as long as the journal can bring them back.
class Document {
public:
    static constexpr quint32 max_id = 0x7fffffff; ///< containers have ids above

    Document();
    ~Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    Journal& journal() { return m_journal; }
    const Journal& journal() const { return m_journal; }
    ModelChanges& changes() { return m_changes; }

    // Kinds
    // Parts and kinds come with the plug-ins, before there are objects, and last as long as the document. It does not
    // own containers and fixed objects.
    /// The part's container gets its id here.
    void add_part(const PackagePart& part);
    const std::vector<PackagePart>& parts() const { return m_parts; }
    /// The place of a part's container in parts(), and of its state in a snapshot.
    std::size_t part_of(const ModelObject& container) const;
    /// Parents come before their children.
    void add_kind(ObjectKind kind);
    /// Frees all objects and forgets parts and kinds: the plug-in that brought them goes.
    void close();
    const std::deque<ObjectKind>& kinds() const { return m_kinds; }
    /// Null for a key that no kind has.
    const ObjectKind* kind(std::string_view key) const;

    // Objects
    /// The object that has or had the id in this scene; null when there is none. Whether it is part of the scene now is
    /// told by its is_attached().
    ModelObject* find(quint32 id) const;
    template <class Object>
    Object* find_as(quint32 id) const
    {
        return dynamic_cast<Object*>(find(id));
    }
    /// Those of a kind that are part of the scene, each parent's in their order.
    std::vector<ModelObject*> objects_of(const ObjectKind& kind) const;
    /// An object made from a state that has an id and no children; not part of the scene yet: attach() does that.
    std::shared_ptr<ModelObject> create(const ObjectKind& kind, StatePtr state);
    /// Puts the object, which has no parent, into the parent's list at `place`, at most its length; recorded.
    void attach(ModelObject& object, ModelObject& parent, qsizetype place);
    /// Takes the objects, which have one parent, out of its list; recorded.
    void detach(std::span<ModelObject* const> objects);
    /// `order` holds the present children of the kind.
    void reorder(ModelObject& parent, const ObjectKind& kind, const IdList& order);
    // Whole contents
    SceneSnapshot snapshot() const;
    /// What an empty scene has: containers and fixed objects.
    SceneSnapshot empty_scene() const;
    /// Puts what was read in the place of everything; recorded. Its ids may be those of objects that were there: these
    /// are found by their ids again when this is undone.
    void install(SceneSnapshot content);
    /// Adds the objects of the kinds, whose ids have to be unused, behind those that are there, and the files; recorded.
    void append(SceneSnapshot content);
    /// Empties the parts that do not travel, their entries of the package too.
    void leave_out_world(SceneSnapshot& content) const;
    /// Fails when the scene may not have so many more objects of a kind.
    Status check_room(const SceneSnapshot& content) const;
    /// Every object that is part of the scene, containers left out, parents before their children.
    std::vector<ModelObject*> objects() const;

    /// An id that no object has or had; 0 when all are used up, which only a made-up package brings about. `recorded`:
    /// it is for an object whose making is undone.
    quint32 take_id(bool recorded = true);
    /// How many times take_id() still answers an id.
    quint32 ids_left() const;

    const DocumentState& state() const;
    const QMap<QString, QByteArray>& files() const { return state().files; }
    /// Recorded; `change` is given the entries for writing.
    void edit_files(const std::function<void(QMap<QString, QByteArray>&)>& change);

    /// Forgets the undo history and every object that only it kept.
    void forget_history();
    /// Frees removed objects that no step of the journal can bring back.
    void drop_unreachable();
    /// Called before: whoever knows objects by address lets those go that are not part of the scene.
    std::function<void()> before_free;
    /// Differs after each time that objects may have ceased to exist.
    quint64 generation() const { return m_generation; }

    // Shown beside authored
    /// Whether writes go to what is shown instead of what is authored; see ShownWrites.
    bool writes_shown() const { return m_writes_shown > 0; }
    /// Everything is shown as authored again.
    void clear_shown();
    /// Who gets what is written to driven attributes; null for nobody. It has to outlive its use.
    void set_driver(AttributeDriver* driver) { m_driver = driver; }
    const AttributeDriver* driver() const { return m_driver; }

private:
    friend class ModelObject;
    friend class ShownWrites;
    class Root;
    class IndexSwap;
    class AddedUnrecorded;
    using Index = QHash<quint32, std::shared_ptr<ModelObject>>;

    void note_overlaid(ModelObject& object) { m_overlaid.push_back(&object); }
    void add_container(ModelObject& container);
    std::vector<std::shared_ptr<ModelObject>> make_objects(SceneSnapshot& content);
    std::vector<std::shared_ptr<ModelObject>> unrecorded_objects() const;
    quint32 next_id() const;
    using ByKind = std::vector<std::vector<ModelObject*>>;
    ByKind collected(bool authored) const;
    const ByKind& authored_objects() const;

    Journal m_journal;
    ModelChanges m_changes;
    std::deque<ObjectKind> m_kinds; ///< objects know theirs by address
    std::vector<PackagePart> m_parts;
    std::map<quint32, ModelObject*> m_permanent; ///< containers and fixed objects
    Index m_objects;
    std::unique_ptr<Root> m_root;
    quint32 m_next_id = 2; ///< never goes back, not even by undo
    quint64 m_generation = 1;
    int m_writes_shown = 0;
    AttributeDriver* m_driver = nullptr;
    std::vector<ModelObject*> m_overlaid;
    mutable ByKind m_authored; ///< found anew after a list of children changed
    mutable bool m_authored_stale = true;
};

/// For the length of a scope what is written to objects is only shown: what the user of a running interface does, its
/// scripts, a timebar. It is never saved and never a step of undo.
class ShownWrites {
public:
    explicit ShownWrites(Document& document) : m_document(document) { ++m_document.m_writes_shown; }
    ~ShownWrites() { --m_document.m_writes_shown; }
    ShownWrites(const ShownWrites&) = delete;
    ShownWrites& operator=(const ShownWrites&) = delete;

private:
    Document& m_document;
};

} // namespace tarn
