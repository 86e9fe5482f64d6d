#pragma once

#include <span>

class CBaseWorld;

namespace tarn {

/// What the list of objects can do to those that are selected.
struct WorldCommand {
    int id;
    const char16_t* chinese;
    const char16_t* english;
    bool (*enabled_if)(CBaseWorld& world);
    void (*run)(CBaseWorld& world);
    bool begins_group = false;
    bool (*checked_if)(CBaseWorld& world) = nullptr; ///< null: never
};

/// In the order of the menu; the numbers are below 100.
std::span<const WorldCommand> world_commands();

} // namespace tarn
