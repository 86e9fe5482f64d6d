#pragma once

class CAnimationScene;

namespace tarn {

struct ModelChange;

/// Whether a change is one of timebars, or of what their objects are called: what an animation shows, frame by frame, is
/// none.
bool is_of_timeline(const ModelChange& change, const CAnimationScene& scene);

} // namespace tarn
