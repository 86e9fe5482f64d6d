#include "draw_context.h"

#include "gui_core/control_style.h"
#include "gui_core/dxut_control.h"
#include "gui_core/gui_core.h"
#include "gui_core/look_parts.h"
#include "gui_core/transitions.h"
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
    if (editing || !control)
        return draw_element(element, state, area, look_of(element, state, control ? control->visual_state() : state));
    const VisualState now = control->visual_state();
    const Transitions::Fade fade = core.transitions().fade_of(*control, now);
    // A row in a list has a state of its own.
    if (state != now || fade.share >= 1)
        return draw_element(element, state, area, look_of(element, state, now));
    const double opacity = painter.opacity();
    draw_element(element, fade.from, area, look_of(element, fade.from, fade.from));
    painter.setOpacity(opacity * fade.share);
    draw_element(element, state, area, look_of(element, state, now));
    painter.setOpacity(opacity);
}

void DrawContext::draw_element(Element element, VisualState state, const QRectF& area, const ElementLook& look) const
{
    // Both sides are rounded, so that nothing is drawn beyond the pixels that the area touches.
    const QPoint corner(qRound(area.left()), qRound(area.top()));
    const QSize size(qRound(area.left() + area.width()) - corner.x(), qRound(area.top() + area.height()) - corner.y());
    if (size.isEmpty())
        return;
    if (probe) {
        const QPointF place = painter.worldTransform().inverted().map(probe->place);
        if (area.contains(place) && (!painter.hasClipping() || painter.clipBoundingRect().contains(place)))
            probe->found = element;
        return;
    }
    // What has no look of its own for a disabled control is drawn faint.
    const bool faint = is_disabled() && (state != VisualState::Disabled || !has_states(element) || look.served);
    const double opacity = painter.opacity();
    if (faint)
        painter.setOpacity(opacity * faintness);
    elements.draw(painter, corner, element_source(core.look(), element, state, look, own_picture(look, size)), size,
                  scale);
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

ElementLook DrawContext::look_of(Element element, VisualState state, VisualState own) const
{
    if (!control)
        return style_element_look(core.look(), look_owner_dialog, element, state);
    const auto& s = static_cast<const ControlState&>(control->shown_state());
    return control->has_extras() ? element_look(core.look(), s, element, own, state)
                                 : style_element_look(core.look(), s.type, element, state);
}

QImage DrawContext::own_picture(const ElementLook& look, QSizeF size) const
{
    return look.picture.isEmpty() ? QImage() : texture(look.picture, size);
}

bool DrawContext::has_own_picture(Element element) const
{
    return control
        && !own_picture(look_of(element, VisualState::Normal, control->visual_state()), QSizeF(1, 1)).isNull();
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
