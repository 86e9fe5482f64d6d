#pragma once

#include "field_key.h"

namespace tarn {

class ModelObject;
struct ObjectState;

/// What drives attributes of objects while the author edits them, a timebar for one. What the author writes to these is
/// the driver's, and the authored state keeps what it has; all else that the same write changed is authored as always.
class AttributeDriver {
public:
    virtual ~AttributeDriver() = default;
    /// Whether the author's writes to some attributes of the object are the driver's now.
    virtual bool drives(const ModelObject& object) const = 0;
    virtual bool drives(const ModelObject& object, FieldKey field) const = 0;
    /// The author wants the driven attributes to be as in `wanted`, a state of the object's class. It has the object show
    /// them; what it keeps of them is a part of the step of undo.
    virtual void take(ModelObject& object, const ObjectState& wanted) = 0;
};

} // namespace tarn
