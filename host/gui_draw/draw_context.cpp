#include "draw_context.h"

#include "gui_core/control_style.h"
#include "gui_core/dxut_control.h"
#include "gui_core/gui_core.h"
#include "texture_cache.h"

#include <QPainter>

#include <cmath>

namespace tarn {

void DrawContext::draw_element(Element element, VisualState state, const QRectF& area) const
{
    draw_element(
        element, state, area,
        styled ? element_look(static_cast<const ControlState&>(styled->shown_state()), element, styled->visual_state())
               : ElementLook());
}

void DrawContext::draw_element(Element element, VisualState state, const QRectF& area, const ElementLook& look) const
{
    // Both sides are rounded, so that nothing is drawn beyond the pixels that the area touches.
    const QPoint corner(qRound(area.left()), qRound(area.top()));
    const QSize size(qRound(area.left() + area.width()) - corner.x(), qRound(area.top() + area.height()) - corner.y());
    if (!size.isEmpty())
        elements.draw(painter, corner, element, state, size, scale, choice_of(look, size));
}

QImage DrawContext::texture(const QString& name, QSizeF size) const
{
    const QSizeF pixels = (size * scale).boundedTo(QSizeF(TextureCache::max_side, TextureCache::max_side));
    return tarn::texture(core, name, {int(std::ceil(pixels.width())), int(std::ceil(pixels.height()))});
}

ElementChoice DrawContext::choice_of(const ElementLook& look, QSizeF size) const
{
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
