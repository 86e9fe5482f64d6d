#include "type_pages.h"

#include "core/language.h"
#include "gui_core/control_state.h"
#include "gui_core/dxut_info_box.h"
#include "gui_scene/gui_plug_scene.h"
#include "picture_size.h"
#include "type_rows.h"

using tarn::ActionResult;
using tarn::ActionRow;
using tarn::FieldRow;
using tarn::Gate;
using tarn::ImageRow;
using tarn::key;
using tarn::ModelObject;
using tarn::NumberLook;
using tarn::PageEntry;
using tarn::Scope;
using tarn::SelectedControls;
using tarn::type_row;

namespace {

constexpr NumberLook whole{.format = "%.0f"};

constexpr FieldRow number_row(FieldRow row, NumberLook number)
{
    row.number = number;
    return row;
}

// Buttons

const SelectedControls buttons{DXUT_CONTROL_BUTTON};
constexpr FieldRow button_rows[] = {tarn::caption_row};
constexpr auto button_scripts = tarn::script_rows({EVENT_BUTTON_CLICKED, EVENT_BUTTON_MOUSE_ENTERED,
                                                   EVENT_BUTTON_MOUSE_LEFT, EVENT_BUTTON_LEFT_DOWN,
                                                   EVENT_BUTTON_LEFT_UP});

// Buttons that are pictures

using ImageButton = tarn::ImageButtonState;
const SelectedControls image_buttons{DXUT_CONTROL_BUTTONST};
constexpr FieldRow image_button_rows[] = {
    tarn::caption_row,
    type_row(6506, key<&ImageButton::annotation_mode>),
    number_row(type_row(6407, key<&ImageButton::annotation_x>), whole),
    number_row(type_row(6419, key<&ImageButton::annotation_y>), whole),
};
constexpr ImageRow image_button_images[] = {
    {6107, 6112, key<&ImageButton::image_normal>},
    {6530, 6113, key<&ImageButton::image_hover>},
    {6109, 6114, key<&ImageButton::image_pressed>},
};
QString image_button_lacks_picture()
{
    return VLCMsgIniW::VLoadString(3917);
}
constexpr ActionRow image_button_actions[] = {
    {6536, tarn::size_to_pictures<image_button_images, image_button_lacks_picture>}};

// Texts

using Static = tarn::StaticState;
const SelectedControls statics{DXUT_CONTROL_STATIC};
constexpr FieldRow static_rows[] = {
    {.control = 6352, .field = key<&Static::text>, .reset = tarn::Default::None},
    {.control = 6097, .field = key<&Static::horizontal_align>},
    {.control = 6525, .field = key<&Static::vertical_align>},
    {.control = 6509, .field = key<&Static::word_wrap>},
    {.control = 6116, .field = key<&Static::shadow>},
};

// Check boxes and radio buttons

using Check = tarn::CheckBoxState;
constexpr FieldRow checked_row = type_row(6378, key<&Check::checked>);
constexpr ImageRow check_images[] = {
    {6160, 6557, key<&Check::image_unchecked>},
    {6556, 6165, key<&Check::image_checked>},
};
QString check_lacks_picture()
{
    return tarn::lang(u"请先设置贴图！", u"Please select a picture first!");
}
constexpr ActionRow check_actions[] = {{6166, tarn::size_to_pictures<check_images, check_lacks_picture>}};

const SelectedControls check_boxes{DXUT_CONTROL_CHECKBOX};
constexpr FieldRow check_rows[] = {tarn::caption_row, checked_row};
constexpr auto check_scripts = tarn::script_rows({EVENT_CHECKBOX_CLICKED, EVENT_BUTTON_MOUSE_ENTERED,
                                                  EVENT_BUTTON_MOUSE_LEFT, EVENT_CHECKBOX_CHECKED,
                                                  EVENT_CHECKBOX_UNCHECKED});

const SelectedControls radio_buttons{DXUT_CONTROL_RADIOBUTTON};
constexpr FieldRow radio_rows[] = {
    tarn::caption_row,
    checked_row,
    {.control = 6364,
     .field = key<&tarn::RadioButtonState::group>,
     .gate = Gate::OnEnter,
     .shows = tarn::Shows::Current,
     .follows = tarn::Follows::Redraw,
     .number = whole},
};
constexpr auto radio_scripts = tarn::script_rows({EVENT_RADIOBUTTON_CLICKED, EVENT_BUTTON_MOUSE_ENTERED,
                                                  EVENT_BUTTON_MOUSE_LEFT, EVENT_RADIOBUTTON_CHECKED,
                                                  EVENT_RADIOBUTTON_UNCHECKED});

// Info boxes

using InfoBox = tarn::InfoBoxState;
const SelectedControls info_boxes{DXUT_CONTROL_INFOBOX};
constexpr FieldRow info_box_rows[] = {
    {.control = 6650, .field = key<&InfoBox::line_height>, .number = whole},
    {.control = 6651, .field = key<&InfoBox::max_lines>, .number = whole},
};

ActionResult add_test_line(CGuiPlugScene&, std::span<ModelObject* const>, ModelObject& current)
{
    static_cast<CDXUTInfoBox&>(current).AddString(tarn::lang(u"测试字符串", u"Test String"));
    return {.changed = true};
}

constexpr ActionRow info_box_actions[] = {{6652, add_test_line}};

// Progress bars: the page edits the current one alone.

using Progress = tarn::ProgressState;
const SelectedControls progress_bars{DXUT_CONTROL_PROGRESS};

constexpr FieldRow progress_row(int control, tarn::FieldKey field)
{
    return {.control = control, .field = field, .scope = Scope::Current};
}

constexpr FieldRow progress_number(int control, tarn::FieldKey field, NumberLook number)
{
    return {.control = control, .field = field, .scope = Scope::Current, .gate = Gate::WithFocus, .number = number};
}

constexpr FieldRow progress_rows[] = {
    progress_number(6213, key<&Progress::percent>, {.format = "%.2f"}),
    progress_number(6413, key<&Progress::total>, whole),
    progress_number(6214, key<&Progress::border>, whole),
    progress_row(6506, key<&Progress::render_state>),
    progress_row(6512, key<&Progress::percent_display>),
    progress_row(6513, key<&Progress::info_display>),
    progress_row(6519, key<&Progress::texture_stretch>),
    progress_row(6522, key<&Static::shadow>),
    progress_row(6094, key<&Progress::integer_display>),
    progress_row(6215, key<&Progress::message>),
};

// Types whose pages only say what they are for

const SelectedControls combo_boxes{DXUT_CONTROL_COMBOBOX};
const SelectedControls sliders{DXUT_CONTROL_SLIDER};
const SelectedControls edit_boxes{DXUT_CONTROL_EDITBOX};
const SelectedControls list_boxes{DXUT_CONTROL_LISTBOX};
const SelectedControls scroll_bars{DXUT_CONTROL_SCROLLBAR};
const SelectedControls picture_controls{DXUT_CONTROL_PICTURE};
const SelectedControls flash_controls{DXUT_CONTROL_FLASH};
const SelectedControls picture_in_pictures{DXUT_CONTROL_PIP};
const SelectedControls maps{DXUT_CONTROL_MAP};

constexpr PageEntry pages[] = {
    {.class_name = "CDlgPropButton",
     .template_id = 6005,
     .target = &buttons,
     .rows = button_rows,
     .scripts = button_scripts},
    {.class_name = "CDlgPropStatic", .template_id = 6009, .target = &statics, .rows = static_rows},
    {.class_name = "CDlgPropCheck",
     .template_id = 6006,
     .target = &check_boxes,
     .rows = check_rows,
     .scripts = check_scripts,
     .images = check_images,
     .set_image = &CGuiPlugScene::set_checkbox_img,
     .actions = check_actions},
    {.class_name = "CDlgPropRadio",
     .template_id = 6007,
     .target = &radio_buttons,
     .rows = radio_rows,
     .scripts = radio_scripts,
     .images = check_images,
     .set_image = &CGuiPlugScene::set_checkbox_img,
     .actions = check_actions},
    {.class_name = "CDlgPropCombo", .template_id = 6391, .target = &combo_boxes},
    {.class_name = "CDlgPropSlider", .template_id = 6010, .target = &sliders},
    {.class_name = "CDlgPropEdit", .template_id = 6008, .target = &edit_boxes},
    {.class_name = "CDlgPropListBox", .template_id = 6011, .target = &list_boxes},
    {.class_name = "CDlgPropScrollbar", .template_id = 6350, .target = &scroll_bars},
    {.class_name = "CDlgPropButtonST",
     .template_id = 6388,
     .target = &image_buttons,
     .rows = image_button_rows,
     .scripts = button_scripts,
     .images = image_button_images,
     .set_image = &CGuiPlugScene::set_buttonst_img,
     .actions = image_button_actions},
    {.class_name = "CDlgPropPicture", .template_id = 6374, .target = &picture_controls},
    {.class_name = "CPropDlgInfoBox",
     .template_id = 6369,
     .target = &info_boxes,
     .rows = info_box_rows,
     .actions = info_box_actions},
    {.class_name = "CDlgPropFlash", .template_id = 6560, .target = &flash_controls},
    {.class_name = "CDlgPropProgressBar", .template_id = 6573, .target = &progress_bars, .rows = progress_rows},
    {.class_name = "CDlgPropPictureInPicture", .template_id = 6609, .target = &picture_in_pictures},
    {.class_name = "CDlgPropMap", .template_id = 6611, .target = &maps},
};

} // namespace

std::span<const PageEntry> type_pages()
{
    return pages;
}

int type_of(const PageEntry& page)
{
    return static_cast<const SelectedControls*>(page.target)->type();
}
