#include "dlg_prop_check.h"

#include "check_rows.h"
#include "gui_core/control_type.h"
#include "gui_scene/gui_plug_scene.h"

namespace {

constexpr tarn::FieldRow rows[] = {tarn::caption_row, tarn::checked_row};

constexpr auto scripts = tarn::script_rows({EVENT_CHECKBOX_CLICKED, EVENT_BUTTON_MOUSE_ENTERED, EVENT_BUTTON_MOUSE_LEFT,
                                            EVENT_CHECKBOX_CHECKED, EVENT_CHECKBOX_UNCHECKED});

} // namespace

CDlgPropCheck::CDlgPropCheck(QWidget* parent)
    : CStateImagePage(QStringLiteral("CDlgPropCheck"), DXUT_CONTROL_CHECKBOX, parent)
{
}

void CDlgPropCheck::OnInitDialog()
{
    CStateImagePage::OnInitDialog();
    bind(rows);
    bind_state_images(tarn::check_images, &CGuiPlugScene::set_checkbox_img, tarn::id_check_size);
    bind_scripts(scripts);
}
