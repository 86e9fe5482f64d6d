#pragma once

#include "core/object_state.h"
#include "core/status.h"
#include "core/value.h"

#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

namespace tarn {

class FieldBase;
class ModelObject;

/// Edits that wait until they are confirmed: who reads through the buffer sees them, the objects do not have them.
class EditBuffer {
public:
    /// What the object will have.
    Value value(const ModelObject& object, const FieldBase& field) const;
    /// Fails where the object would refuse the value.
    Status put(ModelObject& object, const FieldBase& field, const Value& value);
    /// Whether an edit of one of `objects` waits.
    bool waits_for(std::span<ModelObject* const> objects) const;
    /// Writes what waits for `objects`; up to the first that fails.
    Status write(std::span<ModelObject* const> objects);
    void drop(std::span<ModelObject* const> objects);
    /// Forgets the objects that are not part of the scene any more.
    void drop_removed();

private:
    struct Copy {
        std::shared_ptr<ModelObject> object;
        StatePtr state;
        std::vector<const FieldBase*> edited;
    };
    const Copy* copy_of(const ModelObject& object) const;

    std::unordered_map<const ModelObject*, Copy> m_copies;
};

} // namespace tarn
