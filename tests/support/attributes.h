#pragma once

#include "core/field.h"
#include "core/model_object.h"

namespace tarn::test {

/// An attribute by its name, as automation reaches it.
inline Value get(const ModelObject& object, const char* name)
{
    return object.property(*object.fields().find(name));
}
inline Status set(ModelObject& object, const char* name, const Value& value)
{
    return object.set_property(*object.fields().find(name), value);
}
/// An entry of an attribute that maps names to texts or numbers; an empty one goes.
inline Status set_entry(ModelObject& object, const char* name, const QString& entry, const Value& value)
{
    Value all = get(object, name);
    if (auto* texts = std::get_if<TextMap>(&all))
        texts->insert(entry, std::get<QString>(value));
    else
        std::get<NumberMap>(all).insert(entry, double(std::get<qint64>(value)));
    return set(object, name, all);
}

} // namespace tarn::test
