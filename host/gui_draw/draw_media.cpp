#include "draw_context.h"
#include "draw_functions.h"
#include "drawn_state.h"
#include "gui_core/dxut_media.h"
#include "gui_core/dxut_picture.h"
#include "texture_cache.h"

#include <QPainter>

#include <algorithm>

namespace tarn {

void draw_picture(DrawContext& context, const CDXUTPicture& control, const QRectF& area)
{
    bool drawn = false;
    if (drawn_state<PictureState>(control).stretch) {
        drawn = context.draw_picture(control.image(), area);
    } else if (const QImage picture = texture(context.core, control.image()); !picture.isNull()) {
        const QRectF shown(QPointF(), area.size().boundedTo(QSizeF(picture.size())));
        context.draw_image(shown.translated(area.topLeft()), picture, shown);
        drawn = true;
    }
    if (!drawn && context.editing) {
        context.draw_element(Element::Field, VisualState::Normal, area);
        context.draw_element(Element::PicturePlaceholder, VisualState::Normal, area.adjusted(4, 4, -4, -4));
    }
    draw_text(context, control, area);
}

void draw_flash(DrawContext& context, const CDXUTFlash& flash, const QRectF& area)
{
    context.draw_element(Element::InfoPanel, VisualState::Normal, area);
    const double side = std::min({48.0, area.width() / 2, area.height() / 2});
    context.draw_element(Element::MoviePlaceholder, VisualState::Normal,
                         QRectF(area.x() + 8, area.y() + 8, side, side));
    kept_in<TextCache>(flash.draw_slot())
        .draw(context.painter, area.adjusted(8, side + 12, -8, -4), flash.description(),
              {.color = 0xffe8eef0, .font_size = 12, .word_wrap = true});
}

void draw_picture_in_picture(DrawContext& context, const CDXUTPictureInPicture& picture, const QRectF& area)
{
    const auto& s = drawn_state<PictureInPictureState>(picture);
    context.painter.fillRect(area.adjusted(2, 2, -2, -2), QColor::fromRgba(s.background_color));
    if (s.frame_shown)
        context.draw_element(Element::Field, VisualState::Normal, area);
    const double side = std::min({48.0, area.width() - 8, area.height() - 8});
    if (side > 4)
        context.draw_element(Element::CameraPlaceholder, VisualState::Normal,
                             QRectF(area.center() - QPointF(side / 2, side / 2), QSizeF(side, side)));
}

void draw_map(DrawContext& context, const CDXUTMap& map, const QRectF& area)
{
    const auto& s = drawn_state<MapState>(map);
    bool drawn = context.draw_picture(s.image_base, area);
    drawn |= context.draw_picture(s.image_map, area);
    drawn |= context.draw_picture(s.image_surface, area);
    if (drawn)
        return;
    context.draw_element(Element::Field, VisualState::Normal, area);
    const double side = std::min({96.0, area.width() - 8, area.height() - 8});
    if (side > 4)
        context.draw_element(Element::MapPlaceholder, VisualState::Normal,
                             QRectF(area.center() - QPointF(side / 2, side / 2), QSizeF(side, side)));
}

} // namespace tarn
