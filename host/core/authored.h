#pragma once

#include "model_object.h"

#ifdef TARN_SHOWN_ONLY
#error "Whoever paints, hits or runs the interface reads what is shown."
#endif

namespace tarn {

/// What the author made of an object, whatever a preview or a timebar shows of it: for who saves, copies or compares.
class Authored {
public:
    static const ObjectState& state(const ModelObject& object) { return *object.m_state; }
    static Value property(const ModelObject& object, const FieldBase& field)
    {
        return object.value_in(*object.m_state, field);
    }
};

} // namespace tarn
