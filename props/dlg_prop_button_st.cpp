#include "dlg_prop_button_st.h"

#include "gui_core/control_state.h"
#include "gui_core/control_type.h"
#include "gui_scene/gui_plug_scene.h"
#include "type_rows.h"

using tarn::ImageButtonState;
using tarn::key;
using tarn::type_row;

namespace {

constexpr tarn::FieldRow offset_row(int control, tarn::FieldKey field)
{
    tarn::FieldRow row = type_row(control, field);
    row.number = {.format = "%.0f"};
    return row;
}

constexpr tarn::FieldRow rows[] = {
    tarn::caption_row,
    type_row(6506, key<&ImageButtonState::annotation_mode>),
    offset_row(6407, key<&ImageButtonState::annotation_x>),
    offset_row(6419, key<&ImageButtonState::annotation_y>),
};

constexpr tarn::ImageRow images[] = {
    {6107, 6112, key<&ImageButtonState::image_normal>},
    {6530, 6113, key<&ImageButtonState::image_hover>},
    {6109, 6114, key<&ImageButtonState::image_pressed>},
};

constexpr int id_size_to_picture = 6536;

} // namespace

CDlgPropButtonST::CDlgPropButtonST(QWidget* parent)
    : CStateImagePage(QStringLiteral("CDlgPropButtonST"), DXUT_CONTROL_BUTTONST, parent)
{
}

void CDlgPropButtonST::OnInitDialog()
{
    CStateImagePage::OnInitDialog();
    bind(rows);
    bind_state_images(images, &CGuiPlugScene::set_buttonst_img, id_size_to_picture);
    bind_scripts(tarn::button_scripts);
}
