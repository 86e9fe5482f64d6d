#pragma once

class CAnimationScene;

namespace tarn {

class OrbitCamera;

/// Has the skeletons whose timer objects are led by the camera stand where that looks, at their own height, and face
/// away from its eye; not while it looks through a camera of the world. Writes are writes to what is shown. True when one
/// of them moved.
bool lead_by_camera(CAnimationScene& animation, const OrbitCamera& camera);

} // namespace tarn
