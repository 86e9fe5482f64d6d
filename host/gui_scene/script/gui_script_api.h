#pragma once

#include "script/script_api.h"

class CAnimationScene;
class CGuiCore;
class CGuiPlugScene;

namespace tarn {

class WorldScene;

/// The objects of a core and of timebars, which have to outlive whoever uses this.
std::shared_ptr<const ScriptObjects> gui_script_objects(CGuiCore& core, CAnimationScene& animation,
                                                        const WorldScene& world);

/// What the functions of an interface's scene can reach: its dialogs and controls, and verbs for them. The scene has to
/// outlive whoever uses it.
ScriptApi gui_script_api(CGuiPlugScene& scene);

} // namespace tarn
