#pragma once

#include "engine/mouse_tool.h"

#include <memory>

class CBaseWorld;

namespace tarn {

class SceneEditor;

/// What works on a scene in the views. A library above this one implements it and gives it to the scene.
class SceneTools {
public:
    static constexpr int new_dialog = -1;

    virtual ~SceneTools() = default;

    /// The world that the scene is in exists now.
    virtual void on_world_created(CBaseWorld& world) = 0;

    /// The tool while nothing else is chosen.
    virtual MouseTool& select_tool() = 0;
    /// The tool while the interface runs.
    virtual MouseTool& play_tool() = 0;
    /// Draws a new control of a type, or a dialog for `new_dialog`; then it asks the scene to select again.
    virtual std::unique_ptr<MouseTool> create_tool(int type) = 0;
    virtual SceneEditor& editor() = 0;
};

} // namespace tarn
