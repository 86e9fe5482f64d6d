#pragma once

#include "scene_changes.h"

namespace tarn {

/// The changes in a person's words: a line for each dialog, menu, timebar or function that something in it changed of.
QString words_of(const SceneChanges& changes);

/// The same exactly, as JSON.
QString json_of(const SceneChanges& changes);

} // namespace tarn
