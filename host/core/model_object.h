#pragma once

#include "field.h"
#include "journal.h"
#include "object_state.h"

#include <algorithm>
#include <functional>
#include <memory>

namespace tarn {

/// An object of the model: a state described by a field table, whose changes go through the journal.
class ModelObject : public std::enable_shared_from_this<ModelObject> {
public:
    ModelObject(Journal& journal, ObjectState* initial) : m_journal(journal), m_state(initial) {}
    virtual ~ModelObject() = default;
    ModelObject(const ModelObject&) = delete;
    ModelObject& operator=(const ModelObject&) = delete;

    quint32 id() const { return m_state->id; }
    Journal& journal() const { return m_journal; }
    const ObjectState& base_state() const { return *m_state; }
    const FieldTable& fields() const { return m_state->fields(); }

    /// The class name that automation shows.
    virtual const char* class_name() const = 0;
    /// Whether the object is part of the scene now (not deleted, or its deletion undone).
    virtual bool is_attached() const = 0;

    /// An attribute as the outside sees it. Objects override these where reading or writing does more than the state.
    virtual Value property(const FieldBase& field) const { return field.get(*m_state); }
    virtual Status set_property(const FieldBase& field, const Value& value);

    /// Called after every write of the state, when its own rules are in force, for rules between objects. Undo and redo
    /// are no writes.
    virtual void after_write(const WrittenFields&) {}
    /// Called after every change of the state, whoever made it, undo included: caches that hang on it go.
    virtual void state_changed() {}

    /// For loading and copying: takes over a finished state; not recorded.
    void adopt_state(ObjectState* state);
    /// Fills the fresh object's state from a JSON object; not recorded.
    Status load_state(JsonCursor& cursor);
    /// The state of an object that is not part of the scene yet, for putting it together.
    ObjectState& raw_state()
    {
        m_state.detach();
        return *m_state;
    }
    const StatePtr& shared_state() const { return m_state; }
    /// The object's memory, and its state's once that of the object is there, are wanted soon.
    void prefetch_object() const { prefetch(this, usual_size); }
    void prefetch_state() const { prefetch(m_state.constData(), ObjectState::usual_size); }
    /// Exchanges the state with `other`, past the journal; state_changed() is the caller's to call.
    void swap_state(StatePtr& other) { m_state.swap(other); }
    /// Takes over a finished state; recorded like any change.
    void replace_state(StatePtr state);

protected:
    template <class State>
    const State& state() const
    {
        return static_cast<const State&>(*m_state);
    }
    /// The state for writing; the journal keeps the old one. Call written() when done.
    template <class State>
    State& edit()
    {
        return static_cast<State&>(edit_base());
    }
    ObjectState& edit_base();

    void written(const WrittenFields& fields);

    /// Stores `value`, held to the rules, as the attribute `member`; answers whether it changed anything.
    template <auto member>
    bool change(detail::MemberType<member> value)
    {
        using State = typename detail::MemberOf<decltype(member)>::Class;
        const FieldBase& field = *fields().find(key<member>);
        FieldType<detail::MemberType<member>>::hold(field.rules(), value);
        if (state<State>().*member == value)
            return false;
        StatePtr wanted(m_state->clone());
        static_cast<State&>(*wanted).*member = std::move(value);
        return store(field, std::move(wanted));
    }

private:
    friend class Journal;
    static constexpr int usual_size = 128; ///< bytes of a control

    void note_state();
    bool store(const FieldBase& field, StatePtr wanted);

    Journal& m_journal;
    StatePtr m_state;
    std::size_t m_noted_in = 0; ///< the journal's serial when the state was last kept
};

/// Calls `visit` for each element of `list` in order and has the memory of those to come fetched meanwhile. `object`
/// gives the model object that an element stands for.
template <class List, class Visit, class Object = std::identity>
void walk(List&& list, Visit visit, Object object = {})
{
    constexpr decltype(list.size()) ahead = 6;
    const auto count = list.size();
    for (decltype(list.size()) i = 0; i < std::min(2 * ahead, count); ++i)
        std::invoke(object, list[i])->prefetch_object();
    for (decltype(list.size()) i = 0; i < std::min(ahead, count); ++i)
        std::invoke(object, list[i])->prefetch_state();
    for (decltype(list.size()) i = 0; i < count; ++i) {
        if (i + 2 * ahead < count)
            std::invoke(object, list[i + 2 * ahead])->prefetch_object();
        if (i + ahead < count)
            std::invoke(object, list[i + ahead])->prefetch_state();
        visit(list[i]);
    }
}

} // namespace tarn
