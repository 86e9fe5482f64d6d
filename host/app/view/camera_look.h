#pragma once

#include "engine/orbit_camera.h"
#include "overlay_buffer.h"
#include "render/ground_look.h"
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
inline RenderView camera_render_view(const OrbitCamera& camera, QSize surface, double dpr, const ScreenPlacing& placing,
                                     QSize screen)
{
    return {camera.view_matrix(), camera_projection(camera, surface, placing, screen), device_size(surface, dpr), dpr};
}

/// The ground of that.
inline GroundLook camera_look(const RenderView& view)
{
    return ground_look(view.view, view.projection, view.pixels, view.dpr);
}

/// The target of WorldRenderer for the author's view.
constexpr int view_target = 0;

} // namespace tarn
