#include "draw_context.h"
#include "draw_functions.h"
#include "drawn_state.h"
#include "gui_core/dxut_button.h"
#include "gui_core/dxut_button_st.h"
#include "gui_core/dxut_radio_button.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr int padding = 6;         ///< pixels between a button's edge and its caption
constexpr double largest_box = 20; ///< pixels
constexpr double gap = 6;          ///< pixels between the box and the caption

void draw_box(DrawContext& context, const CDXUTCheckBox& check_box, const QRectF& area, Element box_element,
              Element mark)
{
    const auto& s = drawn_state<CheckBoxState>(check_box);
    const QString& picture = s.checked ? s.image_checked : s.image_unchecked;
    if (!picture.isEmpty() && context.draw_picture(picture, area)) {
        draw_text(context, check_box, area);
        return;
    }
    const double side = std::min({area.width(), area.height(), largest_box});
    const QRectF box(area.x(), area.y() + (area.height() - side) / 2, side, side);
    const VisualState look = check_box.visual_state();
    context.draw_element(box_element, look, box);
    if (s.checked)
        context.draw_element(mark, look, box);
    draw_text(context, check_box, area.adjusted(side + gap, 0, 0, 0));
}

} // namespace

void draw_button(DrawContext& context, const CDXUTButton& button, const QRectF& area)
{
    const VisualState state = button.visual_state();
    context.draw_element(Element::Button, state, area);
    QRectF caption = area.adjusted(padding, 0, -padding, 0);
    if (state == VisualState::Pressed)
        caption.translate(0, 1);
    draw_text(context, button, caption);
}

void draw_image_button(DrawContext& context, const CDXUTButtonST& button, const QRectF& area)
{
    const VisualState look = button.visual_state();
    const int slot = look == VisualState::Pressed ? 2 : look == VisualState::Hover ? 1 : 0;
    if (!context.draw_picture(button.image(slot), area) && !context.draw_picture(button.image(0), area))
        context.draw_element(Element::Button, look, area);

    if (!drawn_state<ImageButtonState>(button).annotation_mode)
        draw_text(context, button, area);
}

void draw_annotation(DrawContext& context, const CDXUTButtonST& button)
{
    const QRectF bubble = button.raised_area();
    constexpr double margin = CDXUTButtonST::bubble_margin;
    context.draw_element(Element::Bubble, VisualState::Normal, bubble);
    TextLook look = text_look(button);
    look.vertical_align = 1;
    look.word_wrap = false;
    kept_in<TextCache>(button.draw_slot())
        .draw(context.painter, bubble.adjusted(margin, 0, -margin, 0), button.text(), look);
}

void draw_check_box(DrawContext& context, const CDXUTCheckBox& check_box, const QRectF& area)
{
    draw_box(context, check_box, area, Element::CheckBox, Element::CheckMark);
}

void draw_radio_button(DrawContext& context, const CDXUTRadioButton& radio_button, const QRectF& area)
{
    draw_box(context, radio_button, area, Element::RadioButton, Element::RadioDot);
}

} // namespace tarn
