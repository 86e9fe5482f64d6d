#pragma once

#include "engine/scene_plug.h"

class CGuiPlugScene;

namespace tarn {

/// Events whose function or control is gone, and pictures that are named but missing. All of these are kept as they
/// are, also by a save: what is missing may come back.
std::vector<SceneModel::Problem> find_problems(CGuiPlugScene& scene);

} // namespace tarn
