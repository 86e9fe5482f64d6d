#include "faded_layer.h"

#include "tint.h"

namespace tarn {

namespace {

constexpr quint32 white = 0xffffffff;

/// Where the painter draws at all, pixels of its device.
QRectF drawn_on_device(const QPainter& painter)
{
    const QRectF device(0, 0, painter.device()->width(), painter.device()->height());
    return painter.hasClipping() ? device & painter.deviceTransform().mapRect(painter.clipBoundingRect()) : device;
}

} // namespace

FadedLayer::FadedLayer(QPainter& target, const QRectF& bounds, quint32 color, float transparency)
    : m_target(target), m_color(color), m_transparency(transparency)
{
    if ((color == white && transparency <= 0) || !target.deviceTransform().isInvertible())
        return;
    // A margin for what is smoothed.
    const QRectF drawn = target.deviceTransform().mapRect(bounds).adjusted(-1, -1, 1, 1) & drawn_on_device(target);
    const QRect pixels = drawn.toAlignedRect();
    m_corner = pixels.topLeft();
    m_image = QImage(pixels.size().expandedTo(QSize(1, 1)), QImage::Format_ARGB32_Premultiplied);
    m_image.fill(Qt::transparent);
    m_painter.emplace(&m_image);
    m_painter->setRenderHints(target.renderHints());
    m_painter->setTransform(target.deviceTransform() * QTransform::fromTranslate(-m_corner.x(), -m_corner.y()));
}

FadedLayer::~FadedLayer()
{
    if (!m_painter)
        return;
    m_painter.reset();
    if (m_color != white)
        apply_tint(m_image, m_color, false);
    m_target.save();
    m_target.setTransform(m_target.deviceTransform().inverted() * m_target.transform());
    m_target.setOpacity(m_target.opacity() * double(1 - m_transparency));
    m_target.drawImage(m_corner, m_image);
    m_target.restore();
}

} // namespace tarn
