#include "model_object.h"

#include "language.h"

namespace tarn {

void ModelObject::note_state()
{
    if (m_noted_in == m_journal.serial() || !m_journal.recording())
        return;
    m_journal.note(*this, m_state);
    m_noted_in = m_journal.serial();
}

ObjectState& ModelObject::edit_base()
{
    note_state();
    m_state.detach();
    return *m_state;
}

Status ModelObject::set_property(const FieldBase& field, const Value& value)
{
    if (field.rules().read_only)
        return Status::error(
            lang(u"属性 %1 不能修改", u"the property %1 cannot be changed").arg(QString::fromLatin1(field.name())));
    StatePtr wanted(m_state->clone());
    if (auto status = field.set(*wanted, value); !status)
        return status;
    store(field, std::move(wanted));
    return {};
}

/// Takes over `wanted`, which differs in `field`, unless the rules undo that; answers whether it did.
bool ModelObject::store(const FieldBase& field, StatePtr wanted)
{
    wanted->settle(field.key());
    if (field.same(*m_state, *wanted))
        return false;
    note_state();
    m_state = std::move(wanted);
    written(field.key());
    return true;
}

void ModelObject::written(const WrittenFields& fields)
{
    m_state.detach();
    m_state->settle(fields);
    after_write(fields);
    state_changed();
}

void ModelObject::replace_state(StatePtr state)
{
    note_state();
    m_state = std::move(state);
    written(WrittenFields::whole());
}

Status ModelObject::load_state(JsonCursor& cursor)
{
    m_state.detach();
    auto status = read_state(*m_state, cursor);
    if (status)
        written(WrittenFields::whole());
    return status;
}

void ModelObject::adopt_state(ObjectState* state)
{
    m_state = StatePtr(state);
    m_noted_in = 0;
    written(WrittenFields::whole());
}

} // namespace tarn
