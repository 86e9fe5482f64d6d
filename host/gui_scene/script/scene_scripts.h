#pragma once

#include "core/journal.h"
#include "gui_scene/event_manager.h"
#include "script/config_scene.h"

#include <memory>
#include <vector>

// Functions and events are not undone by themselves. Where a step replaces or adds many of them together with objects
// (import, merge), these companions let them go with the objects; what the author wrote since is kept.

namespace tarn {

/// Puts `functions` and `events` in the place of all of the scene's; answers what the step needs to undo that.
std::unique_ptr<Journal::Companion> replace_scripts(CConfigScene& scene_functions, CEventManager& scene_events,
                                                    std::unique_ptr<CConfigScene> functions, CEventManager events);

/// Adds those whose names and events are free.
std::unique_ptr<Journal::Companion> add_scripts(CConfigScene& scene_functions, CEventManager& scene_events,
                                                std::vector<FuncPtr> functions, std::vector<CGuiEvent> events);

} // namespace tarn
