#pragma once

class CGuiPlugScene;

namespace tarn {

/// Removes the selected objects of the world; the models and pictures that nothing else uses leave the scene with them. One
/// step of undo.
void remove_world_selection(CGuiPlugScene& scene);

} // namespace tarn
