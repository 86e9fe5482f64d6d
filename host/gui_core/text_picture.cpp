#include "text_picture.h"

#include "core/painted_rect.h"

#include <QPainter>

#include <cmath>

namespace tarn {

namespace {

constexpr qsizetype all_bytes = 96 * 1024 * 1024;
constexpr qsizetype picture_bytes = 1024 * 1024; ///< of one; larger texts are few
constexpr int phases = 64;                       ///< that are told apart in a device pixel; finer than any font engine

/// Taken by all pictures. Texts are drawn in the thread of the model only.
qsizetype taken_bytes = 0;

} // namespace

void TextPicture::release()
{
    taken_bytes -= m_image.sizeInBytes();
    m_image = {};
    m_key.scale = 0;
}

bool TextPicture::make(const Key& key, const QRectF& extent, const Glyphs& glyphs)
{
    release();
    const QRectF pixels(extent.topLeft() * key.scale, extent.size() * key.scale);
    const QRect area = pixels.toAlignedRect().adjusted(0, 0, 1, 1);
    const qsizetype most = qsizetype(area.width()) * area.height() * 4;
    if (most > picture_bytes || taken_bytes + most > all_bytes)
        return false;
    QImage canvas(area.size(), QImage::Format_ARGB32_Premultiplied);
    canvas.setDevicePixelRatio(key.scale);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    glyphs(painter, (QPointF(key.phase) / phases - area.topLeft()) / key.scale);
    painter.end();
    const QRect inked = painted_rect(canvas);
    m_image = inked.isEmpty() ? QImage() : canvas.copy(inked);
    m_corner = area.topLeft() + inked.topLeft();
    m_key = key;
    taken_bytes += m_image.sizeInBytes();
    return true;
}

bool TextPicture::draw(QPainter& painter, QPointF place, const QRectF& extent, Ink ink, const Glyphs& glyphs)
{
    if (painter.worldTransform().type() > QTransform::TxTranslate)
        return false;
    const double scale = painter.deviceTransform().m11();
    const QPointF on_device = painter.deviceTransform().map(place);
    const double x = std::round(on_device.x() * phases);
    const double y = std::round(on_device.y() * phases);
    const QPointF pixel(std::floor(x / phases), std::floor(y / phases));
    const Key key{ink, scale, QPoint(int(x - pixel.x() * phases), int(y - pixel.y() * phases))};
    if (key != m_key && !make(key, extent, glyphs))
        return false;
    if (!m_image.isNull())
        painter.drawImage(place + (pixel + m_corner - on_device) / scale, m_image);
    return true;
}

} // namespace tarn
