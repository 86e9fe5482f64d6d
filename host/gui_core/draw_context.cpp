#include "draw_context.h"

#include "control_style.h"
#include "dxut_control.h"
#include "gui_core.h"

#include <QPainter>

#include <cmath>

namespace tarn {

void DrawContext::draw_element(Element element, VisualState state, const QRectF& area) const
{
    // Both sides are rounded, so that nothing is drawn beyond the pixels that the area touches.
    const QPoint corner(qRound(area.left()), qRound(area.top()));
    const QSize size(qRound(area.left() + area.width()) - corner.x(), qRound(area.top() + area.height()) - corner.y());
    if (!size.isEmpty())
        elements.draw(painter, corner, element, state, size, scale,
                      styled ? choice_of(element, size) : ElementChoice());
}

QImage DrawContext::texture(const QString& name, QSizeF size) const
{
    const QSizeF pixels = (size * scale).boundedTo(QSizeF(TextureCache::max_side, TextureCache::max_side));
    return core.texture(name, {int(std::ceil(pixels.width())), int(std::ceil(pixels.height()))});
}

ElementChoice DrawContext::choice_of(Element element, QSizeF size) const
{
    const auto& state = static_cast<const ControlState&>(styled->base_state());
    const ElementLook look = element_look(state, element, styled->visual_state());
    return {look.picture.isEmpty() ? QImage() : texture(look.picture, size), look.color};
}

bool DrawContext::draw_picture(const QString& name, const QRectF& area) const
{
    const QImage picture = texture(name, area.size());
    if (picture.isNull())
        return false;
    painter.drawImage(area, picture);
    return true;
}

} // namespace tarn
