#include "dxut_radio_button.h"

#include "dxut_dialog.h"

CDXUTRadioButton::CDXUTRadioButton(tarn::Journal& journal, CGuiCore& core)
    : CDXUTCheckBox(journal, core, new tarn::RadioButtonState)
{
}

bool CDXUTRadioButton::set_group(int group)
{
    return change<tarn::RadioButtonState>(&tarn::RadioButtonState::group, group);
}

bool CDXUTRadioButton::SetChecked(bool checked)
{
    if (!CDXUTCheckBox::SetChecked(checked))
        return false;
    if (!checked || !dialog())
        return true;
    for (CDXUTControl* control : dialog()->controls()) {
        auto* other = dynamic_cast<CDXUTRadioButton*>(control);
        if (other && other != this && other->group() == group())
            other->CDXUTCheckBox::SetChecked(false);
    }
    return true;
}

void CDXUTRadioButton::draw(tarn::DrawContext& context, const QRectF& area) const
{
    draw_box(context, area, tarn::Element::RadioButton, tarn::Element::RadioDot);
}
