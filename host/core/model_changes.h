#pragma once

#include "field_key.h"
#include "object_state.h"

#include <QObject>

#include <vector>

namespace tarn {

class ModelObject;

/// What changed since listeners were last told.
struct ModelChange {
    struct Object {
        ModelObject* object;
        StatePtr before; ///< what was shown of it then

        bool was_added() const;
        bool was_removed() const;
        bool changed(FieldKey key) const; ///< false for a field that it does not have
    };
    std::vector<Object> objects;
    bool everything = false; ///< another scene, or all places after a change of the screen; `objects` may be incomplete

    /// Whether objects came, went, or stand in another order.
    bool is_of_structure() const;
    /// Whether the attribute changed in one of the objects that have it.
    bool is_of(FieldKey key) const;
};

class ModelListener {
public:
    virtual ~ModelListener() = default;
    /// Comes once for any number of changes, whoever made them. What a listener writes meanwhile is told afterwards.
    virtual void model_changed(const ModelChange& change) = 0;
};

/// Collects what changes in a document and tells it: before a notification code is broadcast, and otherwise once per
/// turn of the event loop.
class ModelChanges {
public:
    void add_listener(ModelListener* listener);
    void remove_listener(ModelListener* listener);

    /// `before` is what was shown of the object; later changes of the same turn keep the first.
    void touch(ModelObject& object, const StatePtr& before);
    void touch_everything();
    /// The objects may cease to exist: what was collected is told without them.
    void forget(const ModelObject& object);
    /// Tells now what was collected.
    void tell();
    /// Another one after each time that changes were told.
    std::size_t turn() const { return m_turn; }

private:
    friend class Rehearsal;
    void schedule();
    void forget_since(std::size_t known, bool everything);

    ModelChange m_pending;
    std::vector<ModelListener*> m_listeners; ///< null: removed while a change was being told
    std::size_t m_turn = 1;                  ///< an object remembers in which one it was touched
    bool m_scheduled = false;
    bool m_telling = false;
    QObject m_context; ///< what is scheduled ends with it
};

/// While one lives, something is tried with what is shown that is taken back before the scope ends, as to see whether texts fit
/// in another language: nobody is told of it. What was changed before is told as ever.
class Rehearsal {
public:
    explicit Rehearsal(ModelChanges& changes);
    ~Rehearsal();
    Rehearsal(const Rehearsal&) = delete;
    Rehearsal& operator=(const Rehearsal&) = delete;

private:
    ModelChanges& m_changes;
    std::size_t m_turn;
    std::size_t m_known;
    bool m_everything;
};

} // namespace tarn
