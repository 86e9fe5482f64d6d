#include "widgets/color_swatch.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr qreal corner = 3;
constexpr int square = 4; ///< pixels; side of a square of the checkerboard
constexpr qreal disabled_opacity = 0.4;

// The same in every theme: what the colour is seen against must not change its look.
void paint_checkerboard(QPainter& painter, const QRect& area)
{
    painter.fillRect(area, Qt::white);
    for (int y = 0; y * square < area.height(); ++y)
        for (int x = y % 2; x * square < area.width(); x += 2)
            painter.fillRect(area.x() + x * square, area.y() + y * square, square, square, QColor(0xbd, 0xbd, 0xbd));
}

} // namespace

CColorSwatch::CColorSwatch(QWidget* parent) : QAbstractButton(parent)
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void CColorSwatch::set_color(quint32 argb)
{
    if (argb == m_argb)
        return;
    m_argb = argb;
    update();
}

QSize CColorSwatch::sizeHint() const
{
    const int height = std::max(fontMetrics().height() + 6, 22);
    return {2 * height, height};
}

QSize CColorSwatch::minimumSizeHint() const
{
    const QSize size = sizeHint();
    return {size.height(), size.height()};
}

void CColorSwatch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath shape;
    shape.addRoundedRect(frame, corner, corner);

    if (!isEnabled())
        painter.setOpacity(disabled_opacity);
    painter.save();
    painter.setClipPath(shape);
    if (qAlpha(m_argb) < 255)
        paint_checkerboard(painter, rect());
    painter.fillRect(rect(), color());
    painter.restore();

    const bool lit = isEnabled() && (hasFocus() || isDown() || (underMouse() && focusPolicy() != Qt::NoFocus));
    QColor edge = palette().color(QPalette::Active, lit ? QPalette::Highlight : QPalette::WindowText);
    if (!lit)
        edge.setAlphaF(0.45f);
    painter.setPen(QPen(edge, isDown() ? 2 : 1));
    painter.drawPath(shape);
}
