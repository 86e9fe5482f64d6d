#include "control_drawing.h"
#include "draw_context.h"
#include "draw_functions.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "gui_core/style_look.h"

#include <QPainter>

#include <algorithm>

namespace tarn {

namespace {

constexpr int caption_margin = 8; ///< pixels beside the caption's text

int caption_font_size(double bar_height, int usual)
{
    return std::clamp(int(bar_height * 0.6), std::min(6, usual), usual);
}

/// The second of a dialog's colours.
quint32 border_color(const StyleLook& style)
{
    const LookOwner& owner = *look_owner(look_owner_dialog);
    return style.color(owner, int(owner.elements.size()) + 1, VisualState::Normal);
}

VisualState look_of(const LiveState& live, const CDXUTDialog& dialog, CDXUTDialog::CaptionButton button)
{
    const auto is_it = [&](const CaptionSpot& spot) { return spot.dialog == &dialog && spot.button == int(button); };
    if (!is_it(live.caption_hovered))
        return VisualState::Normal;
    return is_it(live.caption_pressed) ? VisualState::Pressed : VisualState::Hover;
}

/// A caption bar has room for one.
QString in_one_line(QString caption)
{
    return caption.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

/// `bar` ends where the buttons begin.
void draw_caption_text(DrawContext& context, const CDXUTDialog& dialog, VisualState state, const QRectF& bar)
{
    const StyleLook& style = context.core.look();
    TextLook look = style_text_look(style, look_owner_dialog);
    look.color = style.text_color(look_owner_dialog, state);
    look.font_size = caption_font_size(bar.height(), look.font_size);
    look.vertical_align = 1;
    kept_in<TextCache>(dialog.draw_slot())
        .draw(context.painter, bar.adjusted(caption_margin, 0, -caption_margin, 0),
              in_one_line(dialog.dialog_state().caption), look);
}

void draw_caption(DrawContext& context, const CDXUTDialog& dialog, VisualState state)
{
    const QRectF bar = dialog.caption_rect();
    context.draw_element(Element::Caption, state, bar);
    double right = bar.right();
    for (const auto button : {CDXUTDialog::CaptionButton::Close, CDXUTDialog::CaptionButton::Minimize}) {
        const QRectF place = dialog.caption_button_rect(button);
        if (place.isEmpty())
            continue;
        const auto picture = button == CDXUTDialog::CaptionButton::Close ? Element::CloseButton
            : dialog.minimized()                                         ? Element::RestoreButton
                                                                         : Element::MinimizeButton;
        context.draw_element(picture, look_of(context.core.live(), dialog, button), place);
        right = std::min(right, place.left());
    }
    draw_caption_text(context, dialog, state, QRectF(bar.topLeft(), QPointF(right, bar.bottom())));
}

} // namespace

void draw_dialog(DrawContext& context, const CDXUTDialog& dialog)
{
    using enum VisualState;
    if (dialog.is_root())
        return;
    const DialogState& s = dialog.dialog_state();
    const VisualState state = context.active == &dialog ? Focused : Normal;
    if (s.frame_shown && !dialog.minimized()) {
        // The frame's picture is open at the top, where the caption bar goes.
        const auto frame = s.caption_shown ? Element::Frame : Element::InfoPanel;
        context.draw_element(frame, s.caption_shown ? state : Normal, dialog.client_rect());
    }
    if (s.border_width > 0 && !dialog.minimized()) {
        context.painter.setPen(QPen(QColor::fromRgba(border_color(context.core.look())), s.border_width, Qt::SolidLine,
                                    Qt::SquareCap, Qt::MiterJoin));
        context.painter.setBrush(Qt::NoBrush);
        const double half = s.border_width / 2.0;
        context.painter.drawRect(dialog.outer_rect().adjusted(half, half, -half, -half));
    }
    if (s.caption_shown)
        draw_caption(context, dialog, state);
}

void draw_shrinking_dialog(DrawContext& context, const CDXUTDialog& dialog, const QRectF& frame)
{
    const VisualState state = context.active == &dialog ? VisualState::Focused : VisualState::Normal;
    const QRectF bar(frame.topLeft(), QSizeF(frame.width(), dialog.caption_rect().height()));
    if (dialog.dialog_state().frame_shown)
        context.draw_element(Element::Frame, state, frame.adjusted(0, bar.height(), 0, 0));
    context.draw_element(Element::Caption, state, bar);
    draw_caption_text(context, dialog, state, bar);
}

} // namespace tarn
