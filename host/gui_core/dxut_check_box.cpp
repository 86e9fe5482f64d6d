#include "dxut_check_box.h"

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
