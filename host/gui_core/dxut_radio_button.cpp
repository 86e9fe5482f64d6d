#include "dxut_radio_button.h"

#include "core/field.h"
#include "dxut_dialog.h"

#include <QSet>

using tarn::key;

CDXUTRadioButton::CDXUTRadioButton(tarn::Journal& journal, CGuiCore& core)
    : CDXUTCheckBox(journal, core, new tarn::RadioButtonState)
{
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

/// Whoever is checked clears the others. Who comes to a group that has a checked one is no longer checked: only what was
/// written changes, and typing a group's number passes others.
void CDXUTRadioButton::after_write(const tarn::WrittenFields& written)
{
    if (!GetChecked())
        return;
    const std::vector<CDXUTRadioButton*> others = checked_others();
    const bool came = written.contains(key<&tarn::RadioButtonState::group>)
        || written.contains(key<&tarn::ControlState::dialog>);
    if (came && !others.empty())
        SetChecked(false);
    else
        for (CDXUTRadioButton* other : others)
            other->SetChecked(false);
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

void tarn::keep_one_checked(const std::vector<std::shared_ptr<CDXUTControl>>& controls)
{
    QSet<std::pair<quint32, int>> taken;
    for (const auto& control : controls) {
        if (control->GetType() != DXUT_CONTROL_RADIOBUTTON)
            continue;
        const auto& s = static_cast<const RadioButtonState&>(control->base_state());
        const std::pair group(s.dialog.id, s.group);
        if (s.checked && taken.contains(group))
            static_cast<RadioButtonState&>(control->raw_state()).checked = false;
        else if (s.checked)
            taken.insert(group);
    }
}
