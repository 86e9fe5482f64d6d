#pragma once

#include "engine/base_world.h"
#include "engine/camera_view.h"
#include "engine/orbit_camera.h"
#include "overlay_buffer.h"
#include "render/renderer.h"

namespace tarn {

/// How the view's own camera projects the world onto a surface of that size, in logical pixels, that shows a screen.
inline QMatrix4x4 camera_projection(const OrbitCamera& camera, QSizeF surface, const ScreenPlacing& placing,
                                    QSizeF screen)
{
    const QRectF whole = placing.to_surface(QRectF(QPointF(), screen));
    QMatrix4x4 part;
    part.scale(float(whole.width() / surface.width()), float(whole.height() / surface.height()));
    part.setColumn(3,
                   {float(2 * whole.center().x() / surface.width() - 1),
                    float(1 - 2 * whole.center().y() / surface.height()), 0, 1});
    return part * camera.projection_matrix(whole.size());
}

/// What the view's own camera sees on such a surface.
inline RenderView camera_render_view(CBaseWorld& world, QSize surface, double dpr, const ScreenPlacing& placing,
                                     QSize screen)
{
    const OrbitCamera& camera = world.camera();
    return {.view = camera.view_matrix(),
            .projection = camera_projection(camera, surface, placing, screen),
            .pixels = device_size(surface, dpr),
            .dpr = dpr,
            .axes = world.camera_view().shows_axes()};
}

/// The target of WorldRenderer for the author's view.
constexpr int view_target = 0;

} // namespace tarn
