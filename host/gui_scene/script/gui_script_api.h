#pragma once

#include "script/script_api.h"

class CGuiCore;
class CGuiPlugScene;

namespace tarn {

/// The dialogs and controls of a core, which has to outlive whoever uses this.
std::shared_ptr<const ScriptObjects> gui_script_objects(CGuiCore& core);

/// What the functions of an interface's scene can reach: its dialogs and controls, and verbs for them. The scene has to
/// outlive whoever uses it.
ScriptApi gui_script_api(CGuiPlugScene& scene);

} // namespace tarn
