#pragma once

#include "core/field.h"
#include "core/model_object.h"

namespace tarn {

/// Looks an attribute up in the tables of many objects, most of which are of one class.
class FieldOf {
public:
    explicit FieldOf(FieldKey key) : m_key(key) {}

    /// Null for an object without the attribute.
    const FieldBase* operator()(const ModelObject& object)
    {
        if (const FieldTable* table = &object.fields(); table != m_table) {
            m_table = table;
            m_field = table->find(m_key);
        }
        return m_field;
    }

private:
    FieldKey m_key;
    const FieldTable* m_table = nullptr;
    const FieldBase* m_field = nullptr;
};

} // namespace tarn
