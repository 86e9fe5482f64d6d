#include "plain_surface.h"

#include "camera_look.h"
#include "engine/base_world.h"
#include "ground_raster.h"

#include <QPainter>

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

const QImage& GroundCache::image(const GroundLook& look)
{
    if (look != m_look) {
        m_image = ground_raster(look);
        m_look = look;
    }
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
    const GroundLook look = camera_look(m_world.camera(), device_size(size(), dpr), dpr);
    QPainter painter(this);
    draw_pixels(painter, m_ground.image(look));
    paint_over(painter, {m_objects.image(), m_overlay.image()}, m_world, m_overlay.scale(size()));
}

} // namespace tarn
