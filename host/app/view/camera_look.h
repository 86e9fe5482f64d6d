#pragma once

#include "engine/orbit_camera.h"
#include "render/ground_look.h"

namespace tarn {

/// The ground as the view's own camera sees it.
inline GroundLook camera_look(const OrbitCamera& camera, QSize pixels, double dpr)
{
    return ground_look(camera.view_matrix(), camera.projection_matrix(pixels), pixels, dpr);
}

} // namespace tarn
