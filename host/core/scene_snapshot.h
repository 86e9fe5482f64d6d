#pragma once

#include "held_value.h"
#include "object_state.h"

#include <QMap>
#include <QString>

#include <vector>

namespace tarn {

/// The states of a scene, or of some of its objects: what packages are written from and read into. A snapshot shares its
/// states with the scene it was taken of; it can be read in another thread, and is to be released where states are made.
struct SceneSnapshot {
    quint32 next_id = 2;               ///< ids from here on were never used
    QMap<QString, QByteArray> files;   ///< entries of the package beside its parts
    QMap<QString, QByteArray> damaged; ///< see DocumentState
    QList<HeldValue> held;
    std::vector<StatePtr> containers;           ///< in the order of Document::parts()
    std::vector<std::vector<StatePtr>> objects; ///< in the order of Document::kinds(); each list as it is saved

    template <class State>
    static const State& as(const StatePtr& state)
    {
        return static_cast<const State&>(*state);
    }
    /// The state for writing, copied if it is shared.
    template <class State>
    static State& edit(StatePtr& state)
    {
        state.detach();
        return static_cast<State&>(*state);
    }
};

} // namespace tarn
