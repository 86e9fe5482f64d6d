#include "overlay_buffer.h"

#include "engine/overlay.h"

#include <QPainter>

#include <algorithm>

namespace tarn {

namespace {

/// Device pixels of a composed picture for one of the screen; what is shown larger is stretched, since whole dialogs are
/// composed although little of them is seen.
constexpr double largest_composed = 4;

} // namespace

QSize device_size(QSize logical, double dpr)
{
    return (logical.expandedTo({0, 0})) * dpr;
}

void OverlayBuffer::follow(const OverlayBuffer& other)
{
    m_screen = other.m_screen;
    m_zoom = other.m_zoom;
    m_zoomed_screen = other.m_zoomed_screen;
}

ScreenPlacing OverlayBuffer::placing(QSize logical) const
{
    if (m_zoom)
        return *m_zoom;
    return {m_screen.isEmpty() ? 1 : double(logical.width()) / m_screen.width(), {}};
}

void OverlayBuffer::resize(QSize logical, double dpr)
{
    m_image = QImage(device_size(logical, dpr), QImage::Format_ARGB32_Premultiplied);
    m_image.setDevicePixelRatio(dpr);
    m_placing = placing(logical);
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
    const QSize screen = screen_on(logical);
    const bool all = overlay != m_shown || m_image.size() != device_size(logical, dpr)
        || !qFuzzyCompare(m_image.devicePixelRatio(), dpr) || m_placing != placing(logical);
    // In this order: a new size may damage all of it, and that belongs into this picture.
    if (overlay)
        overlay->set_screen_size(screen);
    has_damage(overlay);
    // Cut before it becomes whole numbers: damage may reach far out of the screen.
    const QRectF damage = m_damage & QRectF(QPointF(), QSizeF(screen));
    m_damage = {};
    m_shown = overlay;
    if (all)
        resize(logical, dpr);
    const QRectF shown = m_placing.to_surface(damage);
    const QRectF scaled(shown.topLeft() * dpr, shown.size() * dpr);
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
    overlay->set_screen_size(screen_on(logical));
    paint(*overlay, m_image.rect());
}

void OverlayBuffer::paint(Overlay& overlay, const QRect& pixels)
{
    const double dpr = m_image.devicePixelRatio();
    const double ratio = dpr * m_placing.scale;
    const QRectF clip(m_placing.to_screen(QPointF(pixels.topLeft()) / dpr), QSizeF(pixels.size()) / ratio);
    QPainter painter(&m_image);
    painter.setTransform(m_placing.transform());
    painter.setClipRect(clip);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(clip, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    // Pictures are composed in whole pixels at least and reduced as they are drawn.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, m_placing.scale < 1 || ratio > largest_composed);
    overlay.paint(painter, clip, std::clamp(ratio, 1.0, largest_composed));
}

} // namespace tarn
