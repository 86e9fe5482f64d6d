#include "dxut_check_box.h"

#include "draw_context.h"

#include <algorithm>

namespace {

constexpr double largest_box = 20; ///< pixels
constexpr double gap = 6;          ///< pixels between the box and the caption

} // namespace

CDXUTCheckBox::CDXUTCheckBox(tarn::Journal& journal, CGuiCore& core)
    : CDXUTCheckBox(journal, core, new tarn::CheckBoxState)
{
}

CDXUTCheckBox::CDXUTCheckBox(tarn::Journal& journal, CGuiCore& core, tarn::CheckBoxState* state)
    : CDXUTStatic(journal, core, state)
{
}

bool CDXUTCheckBox::SetChecked(bool checked)
{
    return change<&tarn::CheckBoxState::checked>(checked);
}

void CDXUTCheckBox::clicked()
{
    SetChecked(!GetChecked());
    raise(EVENT_CHECKBOX_CLICKED);
    raise(GetChecked() ? EVENT_CHECKBOX_CHECKED : EVENT_CHECKBOX_UNCHECKED);
}

void CDXUTCheckBox::draw(tarn::DrawContext& context, const QRectF& area) const
{
    draw_box(context, area, tarn::Element::CheckBox, tarn::Element::CheckMark);
}

void CDXUTCheckBox::draw_box(tarn::DrawContext& context, const QRectF& area, tarn::Element box_element,
                             tarn::Element mark) const
{
    const auto& s = state<tarn::CheckBoxState>();
    const QString& picture = s.checked ? s.image_checked : s.image_unchecked;
    if (!picture.isEmpty() && context.draw_picture(picture, area)) {
        draw_text(context, area);
        return;
    }
    const double side = std::min({area.width(), area.height(), largest_box});
    const QRectF box(area.x(), area.y() + (area.height() - side) / 2, side, side);
    const tarn::VisualState look = visual_state();
    context.draw_element(box_element, look, box);
    if (s.checked)
        context.draw_element(mark, look, box);
    draw_text(context, area.adjusted(side + gap, 0, 0, 0));
}
