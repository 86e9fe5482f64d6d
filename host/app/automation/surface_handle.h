#pragma once

#include "lua_binding.h"

namespace tarn {
class TimelineState;
}

namespace tarn::script {

class MouseSurface;

struct SurfaceHandle {
    static constexpr const char* type_name = "studio.surface";
    static constexpr const char* needed = "a mouse surface";

    MouseSurface* surface;
    TimelineState* timeline = nullptr; ///< null: the surface is no timeline

    bool operator==(const SurfaceHandle&) const = default;
    MouseSurface* operator->() const { return surface; }
};

/// What only a timeline can be asked.
std::span<const Binding> timeline_methods();

} // namespace tarn::script
