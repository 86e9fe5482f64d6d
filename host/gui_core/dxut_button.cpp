#include "dxut_button.h"

#include "draw_context.h"

namespace {

constexpr int padding = 6; ///< pixels between the body's edge and the caption

} // namespace

CDXUTButton::CDXUTButton(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new tarn::ButtonState) {}

void CDXUTButton::draw(tarn::DrawContext& context, const QRectF& area) const
{
    const tarn::VisualState state = visual_state();
    context.draw_element(tarn::Element::Button, state, area);
    QRectF caption = area.adjusted(padding, 0, -padding, 0);
    if (state == tarn::VisualState::Pressed)
        caption.translate(0, 1);
    draw_text(context, caption);
}
