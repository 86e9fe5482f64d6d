#pragma once

#include "script/script_api.h"

class CGuiPlugScene;

namespace tarn {

/// What the functions of an interface's scene can reach: its dialogs and controls, and verbs for them. The scene has to
/// outlive whoever uses it.
ScriptApi gui_script_api(CGuiPlugScene& scene);

} // namespace tarn
