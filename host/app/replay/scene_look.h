#pragma once

#include "core/value.h"

#include <QString>

#include <map>
#include <utility>
#include <vector>

namespace tarn {

class Document;
class ModelObject;
struct InputStep;

/// What a player sees of the dialogs and controls at one moment: which are there, what they say and what is chosen in
/// them.
class SceneLook {
public:
    SceneLook() = default;
    explicit SceneLook(const Document& document);

    /// What is expected by who saw `before` and then this.
    std::vector<InputStep> changes_since(const SceneLook& before, const Document& document) const;

private:
    std::map<std::pair<quint32, const char*>, Value> m_values; ///< by object and attribute
};

/// All that SceneLook sees of one object, as expectations.
std::vector<InputStep> look_of(const ModelObject& object);

/// Whether two values are the same to a player; numbers nearly.
bool looks_same(const Value& a, const Value& b);

} // namespace tarn
