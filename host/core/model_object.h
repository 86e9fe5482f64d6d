#pragma once

#include "document.h"
#include "field.h"
#include "journal.h"
#include "object_state.h"

#include <algorithm>
#include <bitset>
#include <functional>
#include <memory>

namespace tarn {

/// An object of the model: a state described by a field table, whose changes go through the journal.
///
/// Beside what the author made of it, its state, an object has what is shown: the same, but for those fields that a
/// preview or a timebar wrote (see ShownWrites). Whoever draws, hits, lays out or runs the interface reads what is shown;
/// only saving, copying, comparing and automation's get() read what is authored: see authored.h.
///
/// While an AttributeDriver drives attributes of it, writing begins from what is shown, too: then what changed is parted
/// among the driver and the authored state.
class ModelObject : public std::enable_shared_from_this<ModelObject> {
public:
    ModelObject(Document& document, StatePtr state) : m_document(document), m_state(std::move(state)) {}
    ModelObject(Document& document, ObjectState* fresh) : ModelObject(document, StatePtr(fresh)) {}
    virtual ~ModelObject();
    ModelObject(const ModelObject&) = delete;
    ModelObject& operator=(const ModelObject&) = delete;

    quint32 id() const { return m_state->id; }
    Document& document() const { return m_document; }
    Journal& journal() const { return m_document.journal(); }
    /// Null for an object that no kind describes: a container.
    const ObjectKind* kind() const { return m_kind; }
    const FieldTable& fields() const { return m_state->fields(); }
    const ObjectState& shown_state() const { return m_shown ? *m_shown->state : *m_state; }
    /// Shared with who asks until the object is written: for snapshots.
    const StatePtr& shared_state() const { return m_state; }

    /// A state as the object has it in an empty scene; for containers and fixed objects.
    virtual ObjectState* fresh_state() const { return m_state->clone(); }
    /// The class name that automation shows.
    virtual const char* class_name() const = 0;
    /// Whether the object is part of the scene as it is shown now.
    virtual bool is_attached() const { return m_is_root || (m_parent && m_parent->is_attached()); }
    /// Null for a container and for what is in nobody's list.
    ModelObject* parent() const { return m_parent; }

    /// An attribute as the outside sees it, of what is shown. Objects override value_in() and set_property() where reading
    /// or writing does more than the state.
    Value property(const FieldBase& field) const { return value_in(shown_state(), field); }
    virtual Status set_property(const FieldBase& field, const Value& value);

    /// Called after every write, when the state's own rules are in force, for rules between objects. Undo and redo are no
    /// writes.
    virtual void after_write(const WrittenFields&) {}
    /// Called after every change of what is shown, whoever made it, undo included: caches that hang on it go.
    virtual void state_changed() {}
    /// Called when the list of the object's children may be another.
    virtual void children_changed() {}
    /// What hangs on the state is found anew, where the journal or the document exchanged states. Of several objects all
    /// find their links first, since what they show may hang on each other.
    void refresh_links();
    void refresh()
    {
        refresh_links();
        state_changed();
    }

    /// Changes the object by `change`, which is given its state for writing.
    template <class State, class Change>
    void write(Change&& change)
    {
        change(edit<State>());
        written(WrittenFields::whole());
    }

protected:
    /// What is shown.
    template <class State>
    const State& state() const
    {
        return static_cast<const State&>(shown_state());
    }
    /// The value of `field` in `state`, one of the object's.
    virtual Value value_in(const ObjectState& state, const FieldBase& field) const { return field.get(state); }
    /// The state for writing; the journal keeps the old one. Call written() when done.
    template <class State>
    State& edit()
    {
        return static_cast<State&>(begin_write());
    }
    ObjectState& begin_write();
    /// The same past whoever drives attributes: for what the object is by itself, its links and what its place counts from.
    ObjectState& edit_base();
    /// What edit_base() is about to change.
    const ObjectState& base_state() const { return m_shown && m_document.writes_shown() ? *m_shown->state : *m_state; }
    /// Whether what is written to the attribute now is the driver's.
    bool is_driven(FieldKey field) const { return is_driven() && m_document.m_driver->drives(*this, field); }
    /// Puts the rules in force and tells of the change.
    void written(const WrittenFields& fields);
    void settled(const WrittenFields& fields);
    /// The same after a write to the list of children alone.
    void written_children();

    /// Stores `value`, held to the rules, as the attribute `member`; answers whether it changed anything.
    template <auto member>
    bool change(detail::MemberType<member> value)
    {
        using State = typename detail::MemberOf<decltype(member)>::Class;
        const FieldBase& field = *fields().find(key<member>);
        FieldType<detail::MemberType<member>>::hold(field.rules(), value);
        if (static_cast<const State&>(*target()).*member == value)
            return false;
        StatePtr wanted(target()->clone());
        static_cast<State&>(*wanted).*member = std::move(value);
        return store(field, std::move(wanted));
    }

private:
    friend class Authored;
    friend class Document;
    friend class Journal;
    friend class ModelChanges;

    /// What is shown instead of the authored state.
    struct Shown {
        StatePtr state;
        StatePtr before;         ///< while it is written
        bool parts = false;      ///< what is written is the author's, to be parted
        std::bitset<256> fields; ///< those that it has of its own, by their places in the table
        bool parent = false;     ///< the parent too
    };

    /// The state that is written now: the one that is shown, or the authored one.
    const StatePtr& target() const
    {
        return m_shown && (m_document.writes_shown() || is_driven()) ? m_shown->state : m_state;
    }
    bool is_driven() const;
    ObjectState& edit_shown();
    StatePtr note_state();
    void author(const WrittenFields& fields, const StatePtr& wanted, const std::vector<const FieldBase*>& changed,
                bool replaces);
    void part(const WrittenFields& fields, bool replaces = false);
    bool store(const FieldBase& field, StatePtr wanted);
    void swap_state(StatePtr& other) { m_state.swap(other); }
    void hang_on(ObjectRef parent);
    void keep_shown();
    /// Takes over a finished state of the same object; recorded like any change.
    void replace_state(StatePtr state);
    void note_shown_fields();
    void follow_authored();
    void drop_shown();
    void follow_parent();

    Document& m_document;
    StatePtr m_state;
    std::unique_ptr<Shown> m_shown; ///< null while everything is shown as authored
    ModelObject* m_parent = nullptr;
    const ObjectKind* m_kind = nullptr;
    std::size_t m_noted_in = 0;      ///< the journal's serial when the state was last kept
    std::size_t m_touched_in = 0;    ///< the turn in which the change was last told
    std::size_t m_touched_place = 0; ///< among the changes of that turn
    bool m_is_root = false;          ///< a container
    bool m_recorded = true;          ///< changes are steps of undo
};

} // namespace tarn
