#include "overlay_buffer.h"

#include "engine/overlay.h"

#include <QPainter>

namespace tarn {

QSize device_size(QSize logical, double dpr)
{
    return (logical.expandedTo({0, 0})) * dpr;
}

void OverlayBuffer::resize(QSize logical, double dpr)
{
    m_image = QImage(device_size(logical, dpr), QImage::Format_ARGB32_Premultiplied);
    m_image.setDevicePixelRatio(dpr);
    m_image.fill(Qt::transparent);
}

bool OverlayBuffer::has_damage(Overlay* overlay)
{
    if (overlay)
        m_damage |= overlay->take_damage();
    return !m_damage.isEmpty() || overlay != m_shown;
}

QRect OverlayBuffer::update(Overlay* overlay, QSize logical, double dpr)
{
    const bool all = overlay != m_shown || m_image.size() != device_size(logical, dpr)
        || !qFuzzyCompare(m_image.devicePixelRatio(), dpr);
    if (overlay)
        overlay->set_screen_size(logical);
    has_damage(overlay);
    // Cut before it becomes whole numbers: damage may reach far out of the screen.
    const QRectF damage = m_damage & QRectF(QPointF(), QSizeF(logical));
    m_damage = {};
    m_shown = overlay;
    if (all)
        resize(logical, dpr);
    const QRectF scaled(damage.topLeft() * dpr, damage.size() * dpr);
    const QRect pixels = all ? m_image.rect() : scaled.toAlignedRect() & m_image.rect();
    if (overlay && !pixels.isEmpty())
        paint(*overlay, pixels);
    return pixels;
}

void OverlayBuffer::paint_all(Overlay* overlay, QSize logical, double dpr)
{
    resize(logical, dpr);
    m_shown = overlay;
    m_damage = {};
    if (!overlay || m_image.isNull())
        return;
    overlay->set_screen_size(logical);
    paint(*overlay, m_image.rect());
}

void OverlayBuffer::paint(Overlay& overlay, const QRect& pixels)
{
    const double dpr = m_image.devicePixelRatio();
    const QRectF clip(QPointF(pixels.topLeft()) / dpr, QSizeF(pixels.size()) / dpr);
    QPainter painter(&m_image);
    painter.setClipRect(clip);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(clip, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    overlay.paint(painter, clip, dpr);
}

} // namespace tarn
