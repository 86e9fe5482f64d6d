#pragma once

#include "timebar.h"

namespace tarn {

/// Selected keys that are moved about: each time anew from where they stood at first. The whole drag is one step of undo
/// inside an action of the caller's.
class KeyDrag {
public:
    explicit KeyDrag(KeySelection keys);

    /// Puts each key where `moved` says, first keys left out, which stay the first ones; keys that are not selected give up
    /// the places where one comes. Answers whether anything is where it was not before the call.
    bool retime(const std::function<float(float)>& moved);
    bool move(float offset);
    /// Keeps `anchor` in its place.
    bool stretch(float anchor, float factor);
    /// The keys at the times where they stand now.
    const KeySelection& keys() const { return m_now; }

private:
    struct Variable {
        CTVar* variable;
        KeyTrack before;
        std::vector<qsizetype> moving; ///< indexes in `before`
        bool takes_first;
    };
    bool retime(const Variable& variable, const std::function<float(float)>& moved);

    std::vector<Variable> m_variables;
    KeySelection m_now;
};

} // namespace tarn
