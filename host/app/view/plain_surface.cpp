#include "plain_surface.h"

#include "camera_look.h"
#include "engine/base_world.h"
#include "engine/world_renderer.h"
#include "ground_raster.h"

#include <QPainter>

#include <utility>

namespace tarn {

namespace {

/// Copies device pixels to device pixels; QPainter takes its fast way only when neither side is scaled.
void draw_pixels(QPainter& painter, const QImage& image)
{
    const double dpr = painter.device()->devicePixelRatioF();
    painter.save();
    painter.scale(1 / dpr, 1 / dpr);
    painter.drawImage(0, 0,
                      QImage(image.constBits(), image.width(), image.height(), image.bytesPerLine(), image.format()));
    painter.restore();
}

} // namespace

const QImage& WorldPicture::image(CBaseWorld& world, QSize pixels, double dpr)
{
    const QImage with_models = world.renderer().picture(view_target, camera_render_view(world.camera(), pixels, dpr),
                                                        WorldRenderer::Eye::Author);
    if (!with_models.isNull()) {
        m_image = with_models.convertToFormat(QImage::Format_RGB32);
        m_with_models = true;
        return m_image;
    }
    const GroundLook look = camera_look(world.camera(), pixels, dpr);
    if (look != m_look || std::exchange(m_with_models, false))
        m_image = ground_raster(look);
    m_look = look;
    return m_image;
}

void paint_over(QPainter& painter, std::initializer_list<QImage> layers, CBaseWorld& world, double scale)
{
    for (const QImage& layer : layers)
        draw_pixels(painter, layer);
    painter.scale(scale, scale);
    if (MouseTool* tool = world.mouse_tool())
        tool->paint(painter);
}

PlainSurface::PlainSurface(CBaseWorld& world, OverlayBuffer& overlay, QWidget* parent)
    : QWidget(parent), m_world(world), m_overlay(overlay)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PlainSurface::paintEvent(QPaintEvent*)
{
    const double dpr = devicePixelRatioF();
    m_objects.set_screen(m_overlay.screen());
    m_objects.update(m_world.objects_layer(), size(), dpr);
    m_overlay.update(m_world.overlay(), size(), dpr);
    QPainter painter(this);
    draw_pixels(painter, m_picture.image(m_world, device_size(size(), dpr), dpr));
    paint_over(painter, {m_objects.image(), m_overlay.image()}, m_world, m_overlay.scale(size()));
}

} // namespace tarn
