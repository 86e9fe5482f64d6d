#include "dlg_prop_radio.h"

#include "check_rows.h"
#include "gui_core/control_state.h"
#include "gui_core/control_type.h"
#include "gui_scene/gui_plug_scene.h"

namespace {

constexpr tarn::FieldRow rows[] = {
    tarn::caption_row,
    tarn::checked_row,
    {.control = 6364,
     .field = tarn::key<&tarn::RadioButtonState::group>,
     .gate = tarn::Gate::OnEnter,
     .shows = tarn::Shows::Current,
     .follows = tarn::Follows::Redraw,
     .number = {.format = "%.0f"}},
};

constexpr auto scripts = tarn::script_rows({EVENT_RADIOBUTTON_CLICKED, EVENT_BUTTON_MOUSE_ENTERED,
                                            EVENT_BUTTON_MOUSE_LEFT, EVENT_RADIOBUTTON_CHECKED,
                                            EVENT_RADIOBUTTON_UNCHECKED});

} // namespace

CDlgPropRadio::CDlgPropRadio(QWidget* parent)
    : CStateImagePage(QStringLiteral("CDlgPropRadio"), DXUT_CONTROL_RADIOBUTTON, parent)
{
}

void CDlgPropRadio::OnInitDialog()
{
    CStateImagePage::OnInitDialog();
    bind(rows);
    bind_state_images(tarn::check_images, &CGuiPlugScene::set_checkbox_img, tarn::id_check_size);
    bind_scripts(scripts);
}
