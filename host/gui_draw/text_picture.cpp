#include "text_picture.h"

#include "core/painted_rect.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr qsizetype all_bytes = 96 * 1024 * 1024;
constexpr qsizetype picture_bytes = 1024 * 1024; ///< of one; larger texts are few
constexpr double jitter = 1 / 128.0; ///< device pixels by which a place may be off after a move by whole ones

/// Taken by all pictures. Texts are drawn in the thread of the model only.
qsizetype taken_bytes = 0;

QPointF whole(QPointF place)
{
    return {std::floor(place.x()), std::floor(place.y())};
}

QPointF nearest(QPointF place)
{
    return {std::round(place.x()), std::round(place.y())};
}

} // namespace

void TextPicture::release()
{
    taken_bytes -= m_image.sizeInBytes();
    m_image = {};
    m_scale = 0;
}

bool TextPicture::serves(QPointF on_device, Ink ink, double scale) const
{
    const QPointF moved = on_device - m_phase;
    const QPointF off = moved - nearest(moved);
    return scale == m_scale && ink == m_ink && std::max(std::abs(off.x()), std::abs(off.y())) < jitter;
}

bool TextPicture::make(QPointF on_device, Ink ink, double scale, const QRectF& extent, const Glyphs& glyphs)
{
    release();
    const QRectF pixels(extent.topLeft() * scale, extent.size() * scale);
    const QRect area = pixels.toAlignedRect().adjusted(0, 0, 1, 1);
    const qsizetype most = qsizetype(area.width()) * area.height() * 4;
    if (most > picture_bytes || taken_bytes + most > all_bytes)
        return false;
    m_ink = ink;
    m_scale = scale;
    m_phase = on_device - whole(on_device);
    QImage canvas(area.size(), QImage::Format_ARGB32_Premultiplied);
    canvas.setDevicePixelRatio(scale);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    glyphs(painter, (m_phase - area.topLeft()) / scale);
    painter.end();
    const QRect inked = painted_rect(canvas);
    m_image = inked.isEmpty() ? QImage() : canvas.copy(inked);
    m_corner = area.topLeft() + inked.topLeft();
    taken_bytes += m_image.sizeInBytes();
    return true;
}

bool TextPicture::draw(QPainter& painter, QPointF place, const QRectF& extent, Ink ink, const Glyphs& glyphs)
{
    if (painter.worldTransform().type() > QTransform::TxTranslate)
        return false;
    const double scale = painter.deviceTransform().m11();
    const QPointF on_device = painter.deviceTransform().map(place);
    if (!serves(on_device, ink, scale) && !make(on_device, ink, scale, extent, glyphs))
        return false;
    const QPointF pixel = nearest(on_device - m_phase);
    if (!m_image.isNull())
        painter.drawImage(place + (pixel + m_corner - on_device) / scale, m_image);
    return true;
}

} // namespace tarn
