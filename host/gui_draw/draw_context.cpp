#include "draw_context.h"

#include "gui_core/control_style.h"
#include "gui_core/dxut_control.h"
#include "gui_core/gui_core.h"
#include "texture_cache.h"

#include <QPainter>

#include <cmath>

namespace tarn {

namespace {

constexpr double faintness = 0.4; ///< share of a disabled control's pictures that is left

} // namespace

void DrawContext::draw_image(const QRectF& area, const QImage& image, const QRectF& part) const
{
    const double opacity = painter.opacity();
    if (is_disabled())
        painter.setOpacity(opacity * faintness);
    painter.drawImage(area, image, part);
    painter.setOpacity(opacity);
}

void DrawContext::draw_element(Element element, VisualState state, const QRectF& area) const
{
    // Both sides are rounded, so that nothing is drawn beyond the pixels that the area touches.
    const QPoint corner(qRound(area.left()), qRound(area.top()));
    const QSize size(qRound(area.left() + area.width()) - corner.x(), qRound(area.top() + area.height()) - corner.y());
    if (size.isEmpty())
        return;
    const Choice choice = control && control->has_extras() ? choice_of(element, size) : Choice();
    // What has no look of its own for a disabled control is drawn faint.
    const bool faint = is_disabled() && (state != VisualState::Disabled || !Skin::has_states(element) || choice.served);
    const double opacity = painter.opacity();
    if (faint)
        painter.setOpacity(opacity * faintness);
    elements.draw(painter, corner, element, state, size, scale, choice);
    painter.setOpacity(opacity);
}

bool DrawContext::is_disabled() const
{
    return control && !control->GetEnabled();
}

QImage DrawContext::texture(const QString& name, QSizeF size) const
{
    const QSizeF pixels = (size * scale).boundedTo(QSizeF(TextureCache::max_side, TextureCache::max_side));
    return tarn::texture(core, name, {int(std::ceil(pixels.width())), int(std::ceil(pixels.height()))});
}

DrawContext::Choice DrawContext::choice_of(Element element, QSizeF size) const
{
    const auto& state = static_cast<const ControlState&>(control->shown_state());
    const ElementLook look = element_look(state, element, control->visual_state());
    return {{look.picture.isEmpty() ? QImage() : texture(look.picture, size), look.color}, look.served};
}

bool DrawContext::has_own_picture(Element element) const
{
    return control && control->has_extras() && !choice_of(element, QSizeF(1, 1)).picture.isNull();
}

bool DrawContext::draw_picture(const QString& name, const QRectF& area) const
{
    const QImage picture = texture(name, area.size());
    if (picture.isNull())
        return false;
    draw_image(area, picture, picture.rect());
    return true;
}

} // namespace tarn
