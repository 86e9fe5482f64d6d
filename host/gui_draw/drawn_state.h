#pragma once

#include "core/model_object.h"

namespace tarn {

/// The state of an object as it is drawn.
template <class State>
const State& drawn_state(const ModelObject& object)
{
    return static_cast<const State&>(object.shown_state());
}

} // namespace tarn
