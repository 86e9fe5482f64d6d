#include "model_changes.h"

#include "model_object.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace tarn {

bool ModelChange::Object::was_added() const
{
    return before->parent.id == 0 && object->shown_state().parent.id != 0;
}

bool ModelChange::Object::was_removed() const
{
    return before->parent.id != 0 && object->shown_state().parent.id == 0;
}

bool ModelChange::Object::changed(FieldKey key) const
{
    const FieldBase* field = object->fields().find(key);
    return field && !field->same(*before, object->shown_state());
}

bool ModelChange::is_of_structure() const
{
    return everything || std::any_of(objects.begin(), objects.end(), [](const Object& change) {
               const ObjectState& now = change.object->shown_state();
               const auto& fields = now.fields().heap_fields();
               return change.before->parent != now.parent
                   || std::any_of(fields.begin(), fields.end(), [&](const FieldBase* field) {
                          return field->rules().children && !field->same(*change.before, now);
                      });
           });
}

bool ModelChange::is_of(FieldKey key) const
{
    return everything
        || std::any_of(objects.begin(), objects.end(), [key](const Object& change) { return change.changed(key); });
}

void ModelChanges::add_listener(ModelListener* listener)
{
    m_listeners.push_back(listener);
}

void ModelChanges::remove_listener(ModelListener* listener)
{
    if (m_telling)
        std::replace(m_listeners.begin(), m_listeners.end(), listener, static_cast<ModelListener*>(nullptr));
    else
        std::erase(m_listeners, listener);
}

void ModelChanges::touch(ModelObject& object, const StatePtr& before)
{
    if (std::exchange(object.m_touched_in, m_turn) == m_turn)
        return;
    object.m_touched_place = m_pending.objects.size();
    m_pending.objects.push_back({&object, before});
    schedule();
}

void ModelChanges::touch_everything()
{
    m_pending.everything = true;
    schedule();
}

void ModelChanges::schedule()
{
    if (!std::exchange(m_scheduled, true) && QCoreApplication::instance())
        QMetaObject::invokeMethod(
            &m_context, [this] { tell(); }, Qt::QueuedConnection);
}

void ModelChanges::forget(const ModelObject& object)
{
    if (object.m_touched_in == m_turn)
        m_pending.objects[object.m_touched_place].object = nullptr;
}

void ModelChanges::forget_since(std::size_t known, bool everything)
{
    for (auto change = m_pending.objects.begin() + std::ptrdiff_t(known); change != m_pending.objects.end(); ++change)
        if (change->object)
            change->object->m_touched_in = 0;
    m_pending.objects.resize(known);
    m_pending.everything = everything;
}

void ModelChanges::tell()
{
    m_scheduled = false;
    if (m_telling)
        return schedule();
    if (m_pending.objects.empty() && !m_pending.everything)
        return;
    ModelChange change = std::exchange(m_pending, {});
    std::erase_if(change.objects, [](const ModelChange::Object& object) { return !object.object; });
    ++m_turn;
    m_telling = true;
    // By index: a listener may add others.
    for (std::size_t i = 0; i < m_listeners.size(); ++i)
        if (m_listeners[i])
            m_listeners[i]->model_changed(change);
    m_telling = false;
    std::erase(m_listeners, nullptr);
}

Rehearsal::Rehearsal(ModelChanges& changes)
    : m_changes(changes),
      m_turn(changes.m_turn),
      m_known(changes.m_pending.objects.size()),
      m_everything(changes.m_pending.everything)
{
}

Rehearsal::~Rehearsal()
{
    if (m_changes.m_turn == m_turn) // Otherwise it was told meanwhile.
        m_changes.forget_since(m_known, m_everything);
}

} // namespace tarn
