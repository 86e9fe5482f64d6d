#include "ruler_painter.h"

#include "gui_core/interface_font.h"
#include "selection_overlay.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr double thickness = RulerPainter::thickness;
constexpr int font_size = 10;  ///< pixels of the view
constexpr double text_gap = 3; ///< pixels of the view from a tick to its number
const QColor selection_color(0x2f, 0xb5, 0xc9, 110);
const QColor mouse_color(0xff, 0x7a, 0x1a);

double tick_length(RulerTick::Kind kind)
{
    return kind == RulerTick::Numbered ? thickness : kind == RulerTick::Middle ? 7 : 4;
}

/// A rectangle of a strip, from its picture's corner: `start` and `length` along it, `from` and `to` across.
QRectF in_strip(Qt::Orientation along, double start, double length, double from, double to)
{
    return along == Qt::Horizontal ? QRectF(start, from, length, to - from) : QRectF(from, start, to - from, length);
}

void paint_number(QPainter& painter, Qt::Orientation along, double place, const QString& number)
{
    const QFontMetricsF metrics(painter.font());
    const double base = metrics.ascent();
    if (along == Qt::Horizontal) {
        painter.drawText(QPointF(place + text_gap, base), number);
        return;
    }
    painter.save();
    painter.translate(base, place + text_gap + metrics.horizontalAdvance(number));
    painter.rotate(-90);
    painter.drawText(QPointF(), number);
    painter.restore();
}

} // namespace

QImage RulerPainter::made_strip(Qt::Orientation along, const Look& look)
{
    const double length = look.length / look.pixel;
    const QSize pixels = (in_strip(along, 0, length, 0, thickness).size() * look.dpr).toSize();
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(look.dpr);
    const QPalette palette = QGuiApplication::palette();
    image.fill(palette.color(QPalette::Window));
    QPainter painter(&image);
    painter.setFont(interface_font(font_size, false));
    QColor faint = palette.color(QPalette::WindowText);
    faint.setAlpha(120);
    for (const RulerTick& tick : ruler_ticks(look.scale, look.start, look.start + look.length, look.pixel)) {
        const double place = std::floor((tick.place - look.start) / look.pixel);
        painter.fillRect(in_strip(along, place, 1, thickness - tick_length(tick.kind), thickness), faint);
        painter.setPen(palette.color(QPalette::WindowText));
        if (tick.kind == RulerTick::Numbered)
            paint_number(painter, along, place, QString::number(tick.number));
    }
    painter.fillRect(in_strip(along, 0, length, thickness - 1, thickness), faint);
    return image;
}

void RulerPainter::paint_strip(QPainter& painter, Qt::Orientation along, const Look& look)
{
    Strip& strip = along == Qt::Horizontal ? m_top : m_left;
    if (strip.look != look || strip.image.isNull())
        strip = {look, made_strip(along, look)};
    painter.drawImage(QPointF(), strip.image);
}

void RulerPainter::paint(QPainter& painter, const RulerContent& content)
{
    const double pixel = view_pixel(painter);
    const QRectF& shown = content.shown;
    Look look{content.x,
              shown.x(),
              shown.width(),
              pixel,
              painter.device()->devicePixelRatioF(),
              QGuiApplication::palette().cacheKey()};
    painter.save();
    painter.translate(shown.topLeft());
    painter.scale(pixel, pixel); // From here on in pixels of the view.
    paint_strip(painter, Qt::Horizontal, look);
    look.scale = content.y;
    look.start = shown.y();
    look.length = shown.height();
    paint_strip(painter, Qt::Vertical, look);
    const QRectF chosen = content.selection.translated(-shown.topLeft());
    const QPointF mouse = content.mouse - shown.topLeft();
    if (!content.selection.isNull()) {
        painter.fillRect(in_strip(Qt::Horizontal, chosen.x() / pixel, chosen.width() / pixel, 0, thickness - 1),
                         selection_color);
        painter.fillRect(in_strip(Qt::Vertical, chosen.y() / pixel, chosen.height() / pixel, 0, thickness - 1),
                         selection_color);
    }
    if (shown.contains(content.mouse)) {
        painter.fillRect(in_strip(Qt::Horizontal, std::floor(mouse.x() / pixel), 1, 0, thickness), mouse_color);
        painter.fillRect(in_strip(Qt::Vertical, std::floor(mouse.y() / pixel), 1, 0, thickness), mouse_color);
    }
    painter.fillRect(QRectF(0, 0, thickness, thickness), QGuiApplication::palette().color(QPalette::Window));
    painter.restore();
}

} // namespace tarn
