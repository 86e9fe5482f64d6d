#include "dxut_radio_button.h"

#include "core/field.h"
#include "dxut_dialog.h"

CDXUTRadioButton::CDXUTRadioButton(tarn::Journal& journal, CGuiCore& core)
    : CDXUTCheckBox(journal, core, new tarn::RadioButtonState)
{
}

bool CDXUTRadioButton::set_group(int group)
{
    return change<tarn::RadioButtonState>(&tarn::RadioButtonState::group, group);
}

std::vector<CDXUTRadioButton*> CDXUTRadioButton::checked_others() const
{
    std::vector<CDXUTRadioButton*> others;
    if (!dialog())
        return others;
    for (CDXUTControl* control : dialog()->controls()) {
        if (control == this || control->GetType() != DXUT_CONTROL_RADIOBUTTON)
            continue;
        auto* other = static_cast<CDXUTRadioButton*>(control);
        if (other->GetChecked() && other->group() == group())
            others.push_back(other);
    }
    return others;
}

bool CDXUTRadioButton::SetChecked(bool checked)
{
    if (!CDXUTCheckBox::SetChecked(checked))
        return false;
    if (checked)
        for (CDXUTRadioButton* other : checked_others())
            other->CDXUTCheckBox::SetChecked(false);
    return true;
}

tarn::Status CDXUTRadioButton::set_property(const tarn::FieldBase& field, const tarn::Value& value)
{
    if (field.key() != tarn::key<&tarn::CheckBoxState::checked>)
        return CDXUTCheckBox::set_property(field, value);
    const std::unique_ptr<tarn::ObjectState> wanted(base_state().clone());
    auto status = field.set(*wanted, value);
    if (status)
        SetChecked(static_cast<const tarn::RadioButtonState&>(*wanted).checked);
    return status;
}

void CDXUTRadioButton::clicked()
{
    const auto others = checked_others();
    const bool changed = SetChecked(true);
    raise(EVENT_RADIOBUTTON_CLICKED);
    if (!changed)
        return;
    for (CDXUTRadioButton* other : others)
        other->raise(EVENT_RADIOBUTTON_UNCHECKED);
    raise(EVENT_RADIOBUTTON_CHECKED);
}

void CDXUTRadioButton::draw(tarn::DrawContext& context, const QRectF& area) const
{
    draw_box(context, area, tarn::Element::RadioButton, tarn::Element::RadioDot);
}
