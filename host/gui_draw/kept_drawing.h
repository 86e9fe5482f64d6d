#pragma once

#include "gui_core/draw_slot.h"

namespace tarn {

/// What the slot of an object holds, made when it is asked for first. All who ask one object ask for the same type.
template <class Cache>
Cache& kept_in(DrawSlot& slot)
{
    if (!slot)
        slot = std::make_unique<Cache>();
    return static_cast<Cache&>(*slot);
}

} // namespace tarn
