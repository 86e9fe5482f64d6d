#include "widgets/style_parts.h"

#include "widgets/icon_engine.h"

#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace tarn {
namespace {

const char close_svg[] = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 16 16' fill='none' "
                         "stroke='currentColor' stroke-width='1.3'><path d='M4.5 4.5l7 7M11.5 4.5l-7 7'/></svg>";
const char float_svg[] = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 16 16' fill='none' "
                         "stroke='currentColor' stroke-width='1.2'>"
                         "<path d='M6.5 6.5V4.5h5v5h-2'/><rect x='4.5' y='6.5' width='5' height='5'/></svg>";

QColor faint(const QPalette& palette, int alpha)
{
    QColor color = palette.color(QPalette::WindowText);
    color.setAlpha(alpha);
    return color;
}

QRectF square_in(const QRect& rect)
{
    const qreal side = std::min(rect.width(), rect.height()) - 1;
    QRectF square(0, 0, side, side);
    square.moveCenter(QRectF(rect).center());
    square.moveTopLeft(QPointF(square.topLeft().toPoint()) + QPointF(0.5, 0.5));
    return square;
}

// Sets pen and brush for the field of a check box or radio button, and tells the colour of its mark.
QColor begin_indicator(const QStyleOption& option, QPainter& painter)
{
    const QPalette& palette = option.palette;
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool marked = option.state & (QStyle::State_On | QStyle::State_NoChange);
    const bool lit = enabled && (option.state & (QStyle::State_MouseOver | QStyle::State_HasFocus));
    const QColor accent = palette.color(QPalette::Active, QPalette::Highlight);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(lit || (marked && enabled) ? accent : faint(palette, enabled ? 110 : 50));
    painter.setBrush(marked && enabled ? accent : palette.color(QPalette::Base));
    if (enabled && (option.state & QStyle::State_Sunken))
        painter.setBrush(marked ? accent.darker(115) : palette.color(QPalette::Mid));
    return enabled ? palette.color(QPalette::Active, QPalette::HighlightedText) : faint(palette, 110);
}

} // namespace

void draw_header_section(const QStyleOptionHeader& header, QPainter& painter)
{
    const QPalette& palette = header.palette;
    const bool sunken = header.state & QStyle::State_Sunken;
    const bool hovered = (header.state & QStyle::State_MouseOver) && (header.state & QStyle::State_Enabled);
    painter.fillRect(header.rect, palette.color(QPalette::Window));
    if (sunken || hovered)
        painter.fillRect(header.rect, faint(palette, sunken ? 36 : 16));
    painter.setPen(faint(palette, 44));
    painter.drawLine(header.rect.bottomLeft(), header.rect.bottomRight());
    const bool is_last = header.position == QStyleOptionHeader::End
        || header.position == QStyleOptionHeader::OnlyOneSection;
    if (!is_last) {
        const int right = header.rect.right();
        painter.drawLine(right, header.rect.top() + 4, right, header.rect.bottom() - 4);
    }
}

void draw_dock_title(const QStyleOptionDockWidget& dock, const QRect& text, QPainter& painter)
{
    painter.fillRect(dock.rect, dock.palette.color(QPalette::Midlight));
    painter.setPen(faint(dock.palette, 30));
    painter.drawLine(dock.rect.bottomLeft(), dock.rect.bottomRight());
    painter.setPen(dock.palette.color(QPalette::WindowText));
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     dock.fontMetrics.elidedText(dock.title, Qt::ElideRight, text.width()));
}

void draw_check_box(const QStyleOption& option, QPainter& painter)
{
    painter.save();
    const QColor mark = begin_indicator(option, painter);
    const QRectF box = square_in(option.rect);
    painter.drawRoundedRect(box, 2.5, 2.5);
    painter.setPen(QPen(mark, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const auto at = [&](qreal x, qreal y) { return box.topLeft() + QPointF(box.width() * x, box.height() * y); };
    if (option.state & QStyle::State_NoChange)
        painter.drawLine(at(0.25, 0.5), at(0.75, 0.5));
    else if (option.state & QStyle::State_On)
        painter.drawPolyline(QPolygonF{at(0.22, 0.52), at(0.42, 0.72), at(0.78, 0.3)});
    painter.restore();
}

void draw_radio_button(const QStyleOption& option, QPainter& painter)
{
    painter.save();
    const QColor mark = begin_indicator(option, painter);
    const QRectF circle = square_in(option.rect);
    painter.drawEllipse(circle);
    if (option.state & QStyle::State_On) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(mark);
        painter.drawEllipse(circle.center(), circle.width() * 0.22, circle.width() * 0.22);
    }
    painter.restore();
}

void draw_tab(const QStyleOptionTab& tab, QPainter& painter)
{
    const QPalette& palette = tab.palette;
    const bool selected = tab.state & QStyle::State_Selected;
    const bool hovered = (tab.state & QStyle::State_MouseOver) && (tab.state & QStyle::State_Enabled);
    if (hovered && !selected)
        painter.fillRect(tab.rect, faint(palette, 14));
    if (!selected)
        return;
    painter.fillRect(tab.rect, faint(palette, 22));
    QRect line = tab.rect;
    switch (tab.shape) {
    case QTabBar::RoundedSouth:
    case QTabBar::TriangularSouth: line.setTop(line.bottom() - 1); break;
    case QTabBar::RoundedWest:
    case QTabBar::TriangularWest: line.setRight(line.left() + 1); break;
    case QTabBar::RoundedEast:
    case QTabBar::TriangularEast: line.setLeft(line.right() - 1); break;
    default: line.setBottom(line.top() + 1);
    }
    painter.fillRect(line, palette.color(QPalette::Active, QPalette::Highlight));
}

void draw_tab_frame(const QStyleOption& option, QPainter& painter)
{
    painter.save();
    painter.setPen(faint(option.palette, 36));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter.restore();
}

void draw_tool_bar(const QStyleOption& option, QPainter& painter)
{
    painter.fillRect(option.rect, option.palette.color(QPalette::Window));
    painter.fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1),
                     faint(option.palette, 30));
}

void draw_scroll_bar_slider(const QStyleOption& option, const QRectF& slider, bool held, bool hovered,
                            QPainter& painter)
{
    const qreal radius = std::min(slider.width(), slider.height()) / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(faint(option.palette, held ? 130 : hovered ? 100 : 64));
    painter.drawRoundedRect(slider, radius, radius);
}

QIcon close_icon()
{
    return QIcon(new SvgIconEngine(QByteArray(close_svg)));
}

QIcon float_icon()
{
    return QIcon(new SvgIconEngine(QByteArray(float_svg)));
}

} // namespace tarn
