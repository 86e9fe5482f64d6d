#pragma once

#include "core/value.h"

#include <QString>

#include <optional>
#include <vector>

namespace tarn {

class Document;
class ModelObject;
class SceneModel;
struct InputStep;

/// What a player sees of the dialogs, controls and menus at one moment: which are there and where, what they say and what
/// is chosen in them. What timebars drive is left out: it hangs on the moment alone.
class SceneLook {
public:
    SceneLook() = default;
    SceneLook(const Document& document, const SceneModel& model);

    /// What is expected by who saw `before` and then this. That one control lost the keyboard goes without saying.
    std::vector<InputStep> changes_since(const SceneLook& before, const Document& document) const;

private:
    struct Seen {
        quint32 object; ///< id
        const char* attribute;
        Value value;
    };
    const Seen* find(const Seen& same) const;

    std::vector<Seen> m_seen; ///< in the order of the ids
};

/// What a player sees of one object, wherever it is, as expectations.
std::vector<InputStep> look_of(const ModelObject& object, const SceneModel& model);

/// An attribute of the object as it is shown, or one of its live values; nothing when it has none of that name.
std::optional<Value> seen_value(const ModelObject& object, const QString& attribute, const SceneModel& model);

/// Whether two values are the same to a player; numbers nearly.
bool looks_same(const Value& a, const Value& b);

} // namespace tarn
