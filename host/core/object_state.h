#pragma once

#include "field_key.h"
#include "object_pool.h"
#include "value.h"

#include <QByteArray>
#include <QExplicitlySharedDataPointer>
#include <QList>
#include <QSharedData>
#include <QString>
#include <QVarLengthArray>

#include <initializer_list>
#include <utility>

namespace tarn {

class FieldTable;

/// What was written of a state at one time: some attributes, or all of it.
class WrittenFields {
public:
    WrittenFields(FieldKey field) : m_fields{field} {}
    WrittenFields(std::initializer_list<FieldKey> fields) : m_fields(fields) {}
    static WrittenFields whole() { return WrittenFields(); }

    void add(FieldKey field) { m_fields.append(field); }
    bool is_whole() const { return m_fields.isEmpty(); }
    bool contains(FieldKey field) const { return is_whole() || m_fields.contains(field); }
    /// The attributes; none when it is the whole state.
    const auto& fields() const { return m_fields; }

private:
    WrittenFields() = default;

    QVarLengthArray<FieldKey, 4> m_fields;
};

/// The data of a model object, apart from everything that can be worked out from it: plain values, no pointers. States
/// are shared between an object, the undo journal and snapshots, and copied when one of them is written.
struct ObjectState : QSharedData {
    quint32 id = 0;
    ObjectRef parent; ///< whose list of children holds the object; none while it is not part of the scene
    /// Members of the saved object that this version does not know, kept as JSON text and written back.
    QList<std::pair<QString, QByteArray>> unknown;

    virtual ~ObjectState() = default;
    static void* operator new(std::size_t size) { return object_pool().allocate(size); }
    static void operator delete(void* state, std::size_t size) { object_pool().deallocate(state, size); }

    virtual ObjectState* clone() const = 0;
    virtual const FieldTable& fields() const = 0;
    /// Puts the state's own rules in force after a write, whoever wrote. What was written last wins where attributes
    /// hang on each other. It changes nothing in a state that is settled, and is not called for one that was before.
    virtual void settle(const WrittenFields&) {}

protected:
    ObjectState() = default;
    ObjectState(const ObjectState&) = default;
    ObjectState& operator=(const ObjectState&) = delete;
};

/// Gives a state class its clone() and fields(); `State` has a static `field_table()`.
template <class State, class Base = ObjectState>
struct StateOf : Base {
    ObjectState* clone() const override { return new State(static_cast<const State&>(*this)); }
    const FieldTable& fields() const override { return State::field_table(); }
};

} // namespace tarn

template <>
inline tarn::ObjectState* QExplicitlySharedDataPointer<tarn::ObjectState>::clone()
{
    return d->clone();
}

namespace tarn {
using StatePtr = QExplicitlySharedDataPointer<ObjectState>;
}
