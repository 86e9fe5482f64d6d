#include "model_object.h"

#include "language.h"

#include <utility>

namespace tarn {

/// An attribute that is worked out from others and has no value of its own, before and now, was not written.
static bool is_written(const FieldBase& field, const ObjectState& before, const ObjectState& now)
{
    return !field.same(before, now) && !(field.is_default(before) && field.is_default(now));
}

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

bool ModelObject::is_driven() const
{
    const AttributeDriver* driver = m_document.m_driver;
    return driver && !m_document.writes_shown() && m_document.journal().recording() && driver->drives(*this);
}

ObjectState& ModelObject::edit_base()
{
    if (m_document.writes_shown())
        return edit_shown();
    m_document.changes().touch(*this, m_shown ? m_shown->state : m_state);
    (void)note_state();
    m_state.detach();
    return *m_state;
}

ObjectState& ModelObject::begin_write()
{
    if (!is_driven())
        return edit_base();
    ObjectState& state = edit_shown();
    m_shown->parts = true;
    return state;
}

ObjectState& ModelObject::edit_shown()
{
    m_document.changes().touch(*this, m_shown ? m_shown->state : m_state);
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

void ModelObject::written(const WrittenFields& fields)
{
    const bool parts = m_shown && m_shown->parts;
    StatePtr& state = m_document.writes_shown() || parts ? m_shown->state : m_state;
    state.detach();
    state->settle(fields);
    if (parts)
        part(fields);
    else
        keep_shown();
    settled(fields);
}

/// What the author wrote to a state of which some is driven: the driver gets its share, and the rest is authored.
void ModelObject::part(const WrittenFields& fields, bool replaces)
{
    const StatePtr wanted = std::exchange(m_shown->state, std::exchange(m_shown->before, {}));
    m_shown->parts = false;
    AttributeDriver& driver = *m_document.m_driver;
    std::vector<const FieldBase*> authored;
    bool drives = false;
    for (const FieldBase* field : this->fields()) {
        if (!is_written(*field, *m_shown->state, *wanted))
            continue;
        if (driver.drives(*this, field->key()))
            drives = true;
        else
            authored.push_back(field);
    }
    if (!authored.empty())
        author(fields, wanted, authored, replaces);
    if (drives)
        driver.take(*this, *wanted);
}

void ModelObject::author(const WrittenFields& fields, const StatePtr& wanted,
                         const std::vector<const FieldBase*>& changed, bool replaces)
{
    StatePtr start = note_state();
    if (start && replaces)
        m_state = std::move(start);
    m_state.detach();
    for (const FieldBase* field : changed)
        field->copy(*wanted, *m_state);
    m_state->settle(fields);
    follow_authored();
}

void ModelObject::settled(const WrittenFields& fields)
{
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
        if (is_written(*table.at(i), *before, *m_shown->state))
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
        (void)edit_shown();
        m_shown->state = std::move(wanted);
        keep_shown();
    } else if (is_driven()) {
        (void)edit_shown();
        m_shown->state = std::move(wanted);
        part(field.key(), true);
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
        keep_shown();
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
