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
    if (!field.same(*m_state, *wanted))
        replace_state(std::move(wanted));
    return {};
}

void ModelObject::replace_state(StatePtr state)
{
    note_state();
    m_state = std::move(state);
    state_changed();
}

Status ModelObject::load_state(JsonCursor& cursor)
{
    m_state.detach();
    auto status = read_state(*m_state, cursor);
    if (status)
        state_changed();
    return status;
}

void ModelObject::adopt_state(ObjectState* state)
{
    m_state = StatePtr(state);
    m_noted_in = 0;
    state_changed();
}

} // namespace tarn
