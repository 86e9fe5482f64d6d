#include "draw_context.h"
#include "draw_functions.h"
#include "drawn_state.h"
#include "gui_core/dxut_media.h"
#include "gui_core/dxut_picture.h"
#include "gui_core/gui_core.h"
#include "gui_core/style_look.h"
#include "texture_cache.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

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

namespace {

/// False while nothing is to be seen of the movie.
bool draw_movie(const DrawContext& context, const CDXUTFlash& flash, const QRectF& area)
{
    MovieLink* movies = context.core.movies();
    if (!movies || context.probe || area.isEmpty())
        return false;
    const auto& s = drawn_state<FlashState>(flash);
    // One that keeps its size has a pixel of its own for each of the interface.
    const QSizeF pixels = s.keep_size ? area.size() : area.size() * context.scale;
    const QImage picture = movies->picture(flash, {int(std::ceil(pixels.width())), int(std::ceil(pixels.height()))});
    if (picture.isNull())
        return false;
    const double opacity = context.painter.opacity();
    context.painter.setOpacity(opacity * (1 - s.translucency / 100.0));
    context.draw_image(area, picture, picture.rect());
    context.painter.setOpacity(opacity);
    return true;
}

} // namespace

void draw_flash(DrawContext& context, const CDXUTFlash& flash, const QRectF& area)
{
    if (draw_movie(context, flash, area))
        return;
    context.draw_element(Element::InfoPanel, VisualState::Normal, area);
    const double side = std::min({48.0, area.width() / 2, area.height() / 2});
    context.draw_element(Element::MoviePlaceholder, VisualState::Normal,
                         QRectF(area.x() + 8, area.y() + 8, side, side));
    kept_in<TextCache>(flash.draw_slot())
        .draw(context.painter, area.adjusted(8, side + 12, -8, -4), flash.description(),
              {.color = context.core.look().token(QStringLiteral("text")), .font_size = 12, .word_wrap = true});
}

namespace {

/// The world as the control shows it, `size` pixels of the interface large.
QImage world_view(const DrawContext& context, const CDXUTControl& control, QSizeF size)
{
    WorldLink* world = context.core.world();
    return world && !size.isEmpty() ? world->view(control, (size * context.scale).toSize()) : QImage();
}

} // namespace

void draw_picture_in_picture(DrawContext& context, const CDXUTPictureInPicture& picture, const QRectF& area)
{
    const auto& s = drawn_state<PictureInPictureState>(picture);
    context.painter.fillRect(area.adjusted(2, 2, -2, -2), QColor::fromRgba(s.background_color));
    const QRectF inner = area.adjusted(2, 2, -2, -2);
    const QImage world = world_view(context, picture, inner.size());
    if (s.frame_shown)
        context.draw_element(Element::Field, VisualState::Normal, area);
    if (!world.isNull()) {
        context.draw_image(inner, world, world.rect());
        return;
    }
    const double side = std::min({48.0, area.width() - 8, area.height() - 8});
    if (side > 4)
        context.draw_element(Element::CameraPlaceholder, VisualState::Normal,
                             QRectF(area.center() - QPointF(side / 2, side / 2), QSizeF(side, side)));
}

namespace {

QRectF square_about(QPointF middle, double side)
{
    return {middle - QPointF(side / 2, side / 2), QSizeF(side, side)};
}

void draw_zoom_button(DrawContext& context, const CDXUTMap& map, CDXUTMap::Zoom zoom, const QRectF& area)
{
    const VisualState look = map.button_state(zoom);
    const QRectF button = map.button_area(zoom).translated(area.topLeft());
    context.draw_element(Element::Button, look, button);
    const QColor color = QColor::fromRgba(context.core.look().text_color(DXUT_CONTROL_BUTTON, look));
    const double length = button.width() / 2;
    const QRectF bar(button.center() - QPointF(length / 2, 1), QSizeF(length, 2));
    context.painter.fillRect(bar, color);
    if (zoom == CDXUTMap::Zoom::In)
        context.painter.fillRect(QRectF(button.center() - QPointF(1, length / 2), QSizeF(2, length)), color);
}

/// The picture that is zoomed, between the base below and the surface above it, which stay.
bool draw_map_picture(DrawContext& context, const CDXUTMap& map, const QRectF& area)
{
    const QString& name = drawn_state<MapState>(map).image_map;
    if (name.isEmpty()) {
        const QImage world = world_view(context, map, area.size());
        if (!world.isNull())
            context.draw_image(area, world, world.rect());
        return !world.isNull();
    }
    const QImage picture = texture(context.core, name);
    const QRectF range = map.range();
    const QRectF whole = QRectF(map.on_map(range.bottomLeft(), area.size()), map.on_map(range.topRight(), area.size()))
                             .normalized()
                             .translated(area.topLeft());
    // Only the part that is seen is drawn, however large the whole would be.
    const QRectF seen = whole & area;
    if (picture.isNull() || seen.isEmpty())
        return !picture.isNull();
    const double x = picture.width() / whole.width();
    const double y = picture.height() / whole.height();
    context.draw_image(
        seen, picture,
        QRectF((seen.x() - whole.x()) * x, (seen.y() - whole.y()) * y, seen.width() * x, seen.height() * y));
    return true;
}

void draw_spots(const DrawContext& context, const CDXUTMap& map, const QRectF& area)
{
    constexpr double radius = 4; // pixels
    context.painter.setPen(QPen(QColor(255, 255, 255, 230), 1.5));
    context.painter.setBrush(QColor(0xe8, 0x8a, 0x2c));
    for (const MapSpot& spot : map.shown_spots())
        context.painter.drawEllipse(map.on_map(spot.place, area.size()) + area.topLeft(), radius, radius);
}

} // namespace

void draw_map(DrawContext& context, const CDXUTMap& map, const QRectF& area)
{
    const auto& s = drawn_state<MapState>(map);
    bool drawn = context.draw_picture(s.image_base, area);
    drawn |= draw_map_picture(context, map, area);
    drawn |= context.draw_picture(s.image_surface, area);
    if (!drawn) {
        context.draw_element(Element::Field, VisualState::Normal, area);
        if (const double side = std::min({96.0, area.width() - 8, area.height() - 8}); side > 4)
            context.draw_element(Element::MapPlaceholder, VisualState::Normal, square_about(area.center(), side));
    }
    context.painter.save();
    context.painter.setClipRect(area, Qt::IntersectClip);
    draw_spots(context, map, area);
    draw_zoom_button(context, map, CDXUTMap::Zoom::In, area); // An author may put a button beside the map.
    draw_zoom_button(context, map, CDXUTMap::Zoom::Out, area);
    context.painter.restore();
}

} // namespace tarn
