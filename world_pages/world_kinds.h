#pragma once

#include "page_base/table_page.h"
#include "world/world_states.h"

#include <span>

namespace tarn {

/// What the bar "World" has for a type of objects.
struct WorldKind {
    WorldType type;
    int icon;                        ///< number in the icon table
    bool from_nothing;               ///< the author can add one that has no file
    const PageEntry* page = nullptr; ///< for the attributes that only this type has; null for none
};

/// One row for each type, in the order of the types.
std::span<const WorldKind> world_kinds();
const WorldKind& world_kind(WorldType type);

} // namespace tarn
