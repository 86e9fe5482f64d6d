#include "dxut_button_st.h"

#include "control_style.h"
#include "draw_context.h"

#include <QFontMetricsF>

#include <array>

using tarn::ImageButtonState;
using tarn::VisualState;

namespace {

constexpr std::array image_slots{&ImageButtonState::image_normal, &ImageButtonState::image_hover,
                                 &ImageButtonState::image_pressed};
constexpr double bubble_margin = 10; ///< pixels around an annotation's text

bool is_slot(int slot)
{
    return slot >= 0 && slot < int(image_slots.size());
}

} // namespace

CDXUTButtonST::CDXUTButtonST(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new ImageButtonState)
{
}

QString CDXUTButtonST::image(int slot) const
{
    return is_slot(slot) ? state<ImageButtonState>().*image_slots[std::size_t(slot)] : QString();
}

void CDXUTButtonST::draw(tarn::DrawContext& context, const QRectF& area) const
{
    const VisualState look = visual_state();
    const int slot = look == VisualState::Pressed ? 2 : look == VisualState::Hover ? 1 : 0;
    if (!context.draw_picture(image(slot), area) && !context.draw_picture(image(0), area))
        context.draw_element(tarn::Element::Button, look, area);

    const auto& s = state<ImageButtonState>();
    if (!s.annotation_mode) {
        draw_text(context, area);
        return;
    }
    if (look != VisualState::Hover || s.text.isEmpty())
        return;
    const QFontMetricsF metrics(tarn::font_of(s));
    const QSizeF size(metrics.horizontalAdvance(s.text) + 2 * bubble_margin, metrics.height() + bubble_margin);
    const QRectF bubble(area.topLeft() + QPointF(s.annotation_x, s.annotation_y), size);
    context.draw_element(tarn::Element::Bubble, VisualState::Normal, bubble);
    draw_text(context, bubble);
}
