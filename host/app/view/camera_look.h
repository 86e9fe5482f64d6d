#pragma once

#include "engine/orbit_camera.h"
#include "render/ground_look.h"
#include "render/renderer.h"

namespace tarn {

/// The ground as the view's own camera sees it.
inline GroundLook camera_look(const OrbitCamera& camera, QSize pixels, double dpr)
{
    return ground_look(camera.view_matrix(), camera.projection_matrix(pixels), pixels, dpr);
}

inline RenderView camera_render_view(const OrbitCamera& camera, QSize pixels, double dpr)
{
    return {camera.view_matrix(), camera.projection_matrix(pixels), pixels, dpr};
}

/// The target of WorldRenderer for the author's view.
constexpr int view_target = 0;

} // namespace tarn
