#include "draw_context.h"
#include "draw_functions.h"
#include "drawn_state.h"
#include "gui_core/dxut_progress.h"
#include "gui_core/dxut_scroll_bar.h"
#include "gui_core/dxut_slider.h"

#include <QPainter>

#include <algorithm>

namespace tarn {

void draw_slider(DrawContext& context, const CDXUTSlider& slider, const QRectF& area)
{
    const VisualState look = slider.visual_state();
    const double side = slider.thumb_side();
    const double span = double(slider.max()) - slider.min();
    const double share = span > 0 ? std::clamp((slider.value() - double(slider.min())) / span, 0.0, 1.0) : 0;
    if (!slider.stands()) {
        context.draw_element(Element::SliderTrack, look, area);
        context.draw_element(
            Element::SliderThumb, look,
            QRectF(area.x() + share * (area.width() - side), area.y() + (area.height() - side) / 2, side, side));
        return;
    }
    // The picture of the track lies; it is turned so that its left end comes to the bottom.
    context.painter.save();
    context.painter.translate(area.bottomLeft());
    context.painter.rotate(-90);
    context.draw_element(Element::SliderTrack, look, QRectF(0, 0, area.height(), area.width()));
    context.painter.restore();
    context.draw_element(Element::SliderThumb, look,
                         QRectF(area.x() + (area.width() - side) / 2,
                                area.bottom() - side - share * (area.height() - side), side, side));
}

void draw_scroll_bar(DrawContext& context, const CDXUTScrollBar& scroll_bar, const QRectF& area)
{
    const VisualState look = scroll_bar.visual_state();
    context.draw_element(Element::ScrollTrack, look, area);
    const ScrollGeometry track = scroll_bar.geometry();
    const double place = track.place_of(scroll_bar.position() - double(scroll_bar.min()));
    const QRectF thumb = scroll_bar.lies() ? QRectF(area.x() + place, area.y(), track.thumb(), area.height())
                                           : QRectF(area.x(), area.y() + place, area.width(), track.thumb());
    context.draw_element(Element::ScrollThumb, look, thumb);
}

void draw_progress(DrawContext& context, const CDXUTProgress& progress, const QRectF& area)
{
    const auto& s = drawn_state<ProgressState>(progress);
    context.draw_element(Element::ProgressFrame, VisualState::Normal, area);
    const QRectF inside = area.adjusted(s.border, s.border, -s.border, -s.border);
    const QRectF filled(inside.x(), inside.y(), inside.width() * double(s.percent) / 100, inside.height());
    if (filled.width() >= 1) {
        // Uncovering shows a part of the full picture; growing squeezes the whole of it into the filled part.
        const bool uncover = !s.render_state || !s.texture_stretch;
        context.painter.save();
        context.painter.setClipRect(filled, Qt::IntersectClip);
        const QRectF target = uncover ? inside : filled;
        if (s.image.isEmpty() || !context.draw_picture(s.image, target))
            context.draw_element(Element::ProgressFill, VisualState::Normal, target);
        context.painter.restore();
    }
    TextLook look = text_look(progress);
    look.word_wrap = false;
    kept_in<TextCache>(progress.draw_slot()).draw(context.painter, area, progress.shown_text(), look);
}

} // namespace tarn
