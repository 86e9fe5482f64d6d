#include "dxut_check_box.h"

#include "draw_context.h"

#include <algorithm>

namespace {

constexpr double largest_box = 20; ///< pixels
constexpr double gap = 6;          ///< pixels between the box and the caption

} // namespace

CDXUTCheckBox::CDXUTCheckBox(tarn::Journal& journal, CGuiCore& core)
    : CDXUTStatic(journal, core, new tarn::CheckBoxState)
{
}

bool CDXUTCheckBox::SetChecked(bool checked)
{
    return change<tarn::CheckBoxState>(&tarn::CheckBoxState::checked, checked);
}

void CDXUTCheckBox::draw(tarn::DrawContext& context, const QRectF& area) const
{
    const double side = std::min({area.width(), area.height(), largest_box});
    const QRectF box(area.x(), area.y() + (area.height() - side) / 2, side, side);
    const tarn::VisualState state = visual_state();
    context.draw_element(tarn::Element::CheckBox, state, box);
    if (GetChecked())
        context.draw_element(tarn::Element::CheckMark, state, box);
    draw_text(context, area.adjusted(side + gap, 0, 0, 0));
}
