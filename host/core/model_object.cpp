#include "model_object.h"

#include "language.h"

#include <utility>

namespace tarn {

ModelObject::~ModelObject()
{
    m_document.changes().forget(*this);
    if (m_shown)
        std::erase(m_document.m_overlaid, this);
}

/// Has the journal keep the present state; answers the one that a step which goes on began with, where there is one.
StatePtr ModelObject::note_state()
{
    Journal& journal = m_document.journal();
    if (m_noted_in == journal.serial() || !journal.recording())
        return {};
    if (!m_recorded) {
        journal.changed_outside();
        return {};
    }
    m_noted_in = journal.serial();
    return journal.note(*this, m_state);
}

ObjectState& ModelObject::edit_base()
{
    m_document.changes().touch(*this, m_shown ? m_shown->state : m_state);
    if (m_document.writes_shown()) {
        if (!m_shown) {
            m_shown = std::make_unique<Shown>();
            m_shown->state = m_state;
            m_document.note_overlaid(*this);
        }
        if (!m_shown->before)
            m_shown->before = m_shown->state;
        m_shown->state.detach();
        return *m_shown->state;
    }
    (void)note_state();
    m_state.detach();
    return *m_state;
}

void ModelObject::written(const WrittenFields& fields)
{
    StatePtr& state = m_document.writes_shown() ? m_shown->state : m_state;
    state.detach();
    state->settle(fields);
    settled(fields);
}

void ModelObject::settled(const WrittenFields& fields)
{
    keep_shown();
    follow_parent();
    after_write(fields);
    state_changed();
}

void ModelObject::written_children()
{
    m_document.m_authored_stale = true;
    keep_shown();
    children_changed();
}

void ModelObject::keep_shown()
{
    if (m_document.writes_shown())
        note_shown_fields();
    else if (m_shown)
        follow_authored();
}

/// What was written to the shown state becomes a part of the object's own.
void ModelObject::note_shown_fields()
{
    const StatePtr before = std::exchange(m_shown->before, {});
    if (!before)
        return;
    const FieldTable& table = fields();
    for (std::size_t i = 0; i < table.size(); ++i)
        if (!table.at(i)->same(*before, *m_shown->state))
            m_shown->fields.set(i);
    m_shown->parent |= before->parent != m_shown->state->parent;
}

/// The authored state changed: what is shown is that again, but for the fields that were written to it.
void ModelObject::follow_authored()
{
    const StatePtr old = std::exchange(m_shown->state, StatePtr(m_state->clone()));
    const FieldTable& table = fields();
    for (std::size_t i = 0; i < table.size(); ++i)
        if (m_shown->fields.test(i))
            table.at(i)->copy(*old, *m_shown->state);
    if (m_shown->parent)
        m_shown->state->parent = old->parent;
}

void ModelObject::drop_shown()
{
    m_document.changes().touch(*this, m_shown->state);
    m_shown.reset();
}

void ModelObject::follow_parent()
{
    const quint32 wanted = shown_state().parent.id;
    if (wanted != (m_parent ? m_parent->id() : 0))
        m_parent = wanted ? m_document.find(wanted) : nullptr;
}

void ModelObject::refresh_links()
{
    m_document.m_authored_stale = true;
    follow_parent();
    children_changed();
}

Status ModelObject::set_property(const FieldBase& field, const Value& value)
{
    if (field.rules().read_only)
        return Status::error(
            lang(u"属性 %1 不能修改", u"the property %1 cannot be changed").arg(QString::fromLatin1(field.name())));
    StatePtr wanted(target()->clone());
    if (auto status = field.set(*wanted, value); !status)
        return status;
    store(field, std::move(wanted));
    return {};
}

/// Takes over `wanted`, which differs in `field` from what is written, unless the rules undo that; answers whether it did.
bool ModelObject::store(const FieldBase& field, StatePtr wanted)
{
    wanted->settle(field.key());
    if (field.same(*target(), *wanted))
        return false;
    if (m_document.writes_shown()) {
        (void)edit_base();
        m_shown->state = std::move(wanted);
    } else {
        m_document.changes().touch(*this, m_shown ? m_shown->state : m_state);
        // What is typed on replaces what was typed before: it begins where the first letter began, so that a value which
        // was there only in between leaves nothing behind.
        if (StatePtr start = note_state()) {
            m_state = std::move(start);
            m_state.detach();
            field.copy(*wanted, *m_state);
            m_state->settle(field.key());
        } else {
            m_state = std::move(wanted);
        }
    }
    settled(field.key());
    return true;
}

/// Without a word to anybody: for what is not recorded, when whole contents change.
void ModelObject::hang_on(ObjectRef parent)
{
    m_state.detach();
    m_state->parent = parent;
    follow_parent();
}

/// The caller refreshes the object, when others are what they will be.
void ModelObject::replace_state(StatePtr state)
{
    m_document.m_authored_stale = true;
    m_document.changes().touch(*this, m_shown ? m_shown->state : m_state);
    (void)note_state();
    m_state = std::move(state);
    if (m_shown)
        follow_authored();
}

} // namespace tarn
