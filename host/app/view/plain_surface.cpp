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

const QImage& WorldPicture::image(CBaseWorld& world, const RenderView& view)
{
    const QImage with_models = world.renderer().picture(view_target, view, WorldRenderer::Eye::Author);
    if (!with_models.isNull()) {
        m_image = with_models.convertToFormat(QImage::Format_RGB32);
        m_with_models = true;
        return m_image;
    }
    const GroundLook look = ground_look(view);
    if (look != m_look || std::exchange(m_with_models, false))
        m_image = ground_raster(look);
    m_look = look;
    return m_image;
}

void paint_over(QPainter& painter, std::initializer_list<QImage> layers, CBaseWorld& world,
                const ScreenPlacing& placing)
{
    for (const QImage& layer : layers)
        draw_pixels(painter, layer);
    painter.setTransform(placing.transform());
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
    m_objects.follow(m_overlay);
    const ScreenPlacing placing = m_overlay.placing(size());
    m_objects.update(m_world.objects_layer(), size(), dpr);
    m_overlay.update(m_world.overlay(), size(), dpr);
    const RenderView view = camera_render_view(m_world, size(), dpr, placing, m_overlay.screen_on(size()));
    QPainter painter(this);
    draw_pixels(painter, m_picture.image(m_world, view));
    paint_over(painter, {m_objects.image(), m_overlay.image()}, m_world, placing);
}

} // namespace tarn
