#pragma once

#include "models/model.h"

struct aiScene;

namespace tarn {

class ModelFolder;

/// What an imported scene shows, as a model. `is_gltf`: the colours of materials are linear, as that format has them.
/// Cameras, lights, points and lines are left out.
Result<ModelData> convert_scene(const aiScene& scene, ModelFolder& folder, bool is_gltf);

} // namespace tarn
