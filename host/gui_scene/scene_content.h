#pragma once

#include "event_manager.h"
#include "gui_core/gui_core.h"
#include "script/config_scene.h"

#include <memory>

namespace tarn {

/// A whole scene that is not the open one yet: read from a package.
struct SceneContent {
    SceneSnapshot objects;
    std::unique_ptr<CConfigScene> functions = std::make_unique<CConfigScene>();
    CEventManager events{};
};

/// What a package is written from.
struct SceneParts {
    CGuiCore& core;
    const CConfigScene& functions;
    const CEventManager& events;
};

} // namespace tarn
