#include "draw_context.h"

#include <QPainter>

namespace tarn {

void DrawContext::draw_element(Element element, VisualState state, const QRectF& area) const
{
    const QSize size(qRound(area.width()), qRound(area.height()));
    if (!size.isEmpty())
        painter.drawImage(QPointF(qRound(area.x()), qRound(area.y())), elements.image(element, state, size, scale));
}

} // namespace tarn
