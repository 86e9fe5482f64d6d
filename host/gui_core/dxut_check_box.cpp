#include "dxut_check_box.h"

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
