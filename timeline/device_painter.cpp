#include "device_painter.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainterPath>

#include <algorithm>

namespace tarn {

namespace {

QFont of_height(QFont font, double pixels)
{
    font.setPixelSize(std::max(int(std::lround(pixels)), 1));
    return font;
}

} // namespace

DevicePainter::DevicePainter(QPainter& painter, double ratio, const QFont& font)
    : m_painter(painter),
      m_ratio(ratio),
      m_base(painter.transform()),
      m_font(of_height(font, 12 * ratio)),
      m_small_font(of_height(font, 10 * ratio))
{
}

QRect DevicePainter::at(const QRectF& rect) const
{
    return {QPoint(at(rect.left()), at(rect.top())), QPoint(at(rect.right()) - 1, at(rect.bottom()) - 1)};
}

void DevicePainter::fill(const QRectF& rect, const QBrush& brush)
{
    m_painter.fillRect(at(rect), brush);
}

void DevicePainter::fill(const std::vector<QRect>& rects, const QColor& color)
{
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(color);
    m_painter.drawRects(rects.data(), int(rects.size()));
}

void DevicePainter::frame(const QRectF& rect, const QColor& color)
{
    horizontal_line(rect.left(), rect.right(), rect.top(), color);
    horizontal_line(rect.left(), rect.right(), rect.bottom() - 1, color);
    vertical_line(rect.left(), rect.top() + 1, rect.bottom() - 1, color);
    vertical_line(rect.right() - 1, rect.top() + 1, rect.bottom() - 1, color);
}

void DevicePainter::vertical_line(double x, double top, double bottom, const QColor& color)
{
    m_painter.fillRect(at({x, top, 1, bottom - top}), color);
}

void DevicePainter::horizontal_line(double left, double right, double y, const QColor& color)
{
    m_painter.fillRect(at({left, y, right - left, 1}), color);
}

void DevicePainter::image(int x, int y, const QImage& image)
{
    m_painter.drawImage(x, y, image);
}

void DevicePainter::shape(const QPainterPath& path, const QBrush& fill, const QColor& outline, double width)
{
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setTransform(QTransform::fromScale(m_ratio, m_ratio) * m_base);
    m_painter.setBrush(fill);
    m_painter.setPen(outline.alpha() ? QPen(outline, width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin)
                                     : QPen(Qt::NoPen));
    m_painter.drawPath(path);
    m_painter.setTransform(m_base);
    m_painter.setRenderHint(QPainter::Antialiasing, false);
}

void DevicePainter::text(double x, double middle, const QString& text, const QColor& color, TextSize size)
{
    m_painter.setFont(font(size));
    m_painter.setPen(color);
    const double half_height = QFontMetricsF(font(size)).capHeight() / 2;
    m_painter.drawText(QPointF(at(x), std::round(middle * m_ratio + half_height)), text);
}

double DevicePainter::text_width(const QString& text, TextSize size) const
{
    return QFontMetricsF(font(size)).horizontalAdvance(text) / m_ratio;
}

QString DevicePainter::elided(const QString& text, double width, TextSize size) const
{
    return QFontMetricsF(font(size)).elidedText(text, Qt::ElideRight, width * m_ratio);
}

void DevicePainter::clip(const QRectF& rect)
{
    m_painter.save();
    m_painter.setClipRect(at(rect), Qt::IntersectClip);
}

void DevicePainter::unclip()
{
    m_painter.restore();
}

} // namespace tarn
