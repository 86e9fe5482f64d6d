#include "edit_buffer.h"
#include "core/authored.h"

#include "core/model_object.h"

#include <algorithm>

namespace tarn {

const EditBuffer::Copy* EditBuffer::copy_of(const ModelObject& object) const
{
    const auto copy = m_copies.find(&object);
    return copy == m_copies.end() ? nullptr : &copy->second;
}

Value EditBuffer::value(const ModelObject& object, const FieldBase& field) const
{
    const Copy* copy = copy_of(object);
    const bool edited = copy && std::find(copy->edited.begin(), copy->edited.end(), &field) != copy->edited.end();
    return edited ? field.get(*copy->state) : object.property(field);
}

Status EditBuffer::put(ModelObject& object, const FieldBase& field, const Value& value)
{
    const Copy* before = copy_of(object);
    // Not the state that is there: another buffer may have been copied from this one.
    const StatePtr state(before ? before->state->clone() : Authored::state(object).clone());
    if (Status set = field.set(*state, value); !set)
        return set;
    Copy& copy = m_copies.try_emplace(&object, Copy{object.shared_from_this(), {}, {}}).first->second;
    copy.state = state;
    if (std::find(copy.edited.begin(), copy.edited.end(), &field) == copy.edited.end())
        copy.edited.push_back(&field);
    return {};
}

bool EditBuffer::waits_for(std::span<ModelObject* const> objects) const
{
    return !m_copies.empty()
        && std::any_of(objects.begin(), objects.end(), [this](const ModelObject* object) { return copy_of(*object); });
}

Status EditBuffer::write(std::span<ModelObject* const> objects)
{
    for (ModelObject* object : objects)
        if (const Copy* copy = copy_of(*object))
            for (const FieldBase* field : copy->edited)
                if (Status set = object->set_property(*field, field->get(*copy->state)); !set)
                    return set;
    return {};
}

void EditBuffer::drop(std::span<ModelObject* const> objects)
{
    for (const ModelObject* object : objects)
        m_copies.erase(object);
}

void EditBuffer::drop_removed()
{
    std::erase_if(m_copies, [](const auto& copy) { return !copy.second.object->is_attached(); });
}

} // namespace tarn
