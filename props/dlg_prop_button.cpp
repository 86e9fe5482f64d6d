#include "dlg_prop_button.h"

#include "gui_core/control_type.h"
#include "type_rows.h"

CDlgPropButton::CDlgPropButton(QWidget* parent)
    : CBoundPage(QStringLiteral("CDlgPropButton"), DXUT_CONTROL_BUTTON, parent)
{
}

void CDlgPropButton::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind(std::span(&tarn::caption_row, 1));
    bind_scripts(tarn::button_scripts);
}
