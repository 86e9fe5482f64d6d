#include "type_pages.h"

#include "color_rows.h"
#include "core/field.h"
#include "core/language.h"
#include "dlg_prop_flash.h"
#include "gui_core/control_state.h"
#include "gui_core/dxut_info_box.h"
#include "gui_scene/gui_plug_scene.h"
#include "page_base/value_part.h"
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
using tarn::SceneObjectRow;
using tarn::Scope;
using tarn::ScriptRow;
using tarn::SelectedControls;
using tarn::type_row;
using tarn::Value;

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
constexpr ImageRow progress_images[] = {{6897, 6898, key<&Progress::image>}};

// Sliders: what is typed counts, what a refresh shows does not.

using Slider = tarn::SliderState;
const SelectedControls sliders{DXUT_CONTROL_SLIDER};

constexpr FieldRow slider_row(int control, tarn::FieldKey field, double minimum, double maximum)
{
    FieldRow row = type_row(control, field);
    row.gate = Gate::WithFocus;
    row.number = {.format = "%1.0f", .minimum = minimum, .maximum = maximum};
    return row;
}

/// The range as the slider has it. Where its ends are one there is no room, and the edit keeps the range from before.
tarn::Limits slider_range(const ModelObject& slider)
{
    const auto end = [&](tarn::FieldKey field) {
        return tarn::number_of(slider.property(*slider.fields().find(field)));
    };
    return {end(key<&Slider::min>), end(key<&Slider::max>)};
}

constexpr FieldRow slider_value_row()
{
    FieldRow row = slider_row(6381, key<&Slider::value>, -1000000, 1000000);
    row.limits = slider_range;
    return row;
}

// The ends' ranges are one apart, so that the lower end can stay below the upper one.
constexpr FieldRow slider_rows[] = {
    slider_row(6380, key<&Slider::min>, -1000000, 999999),
    slider_row(6358, key<&Slider::max>, -999999, 1000000),
    slider_value_row(),
};
constexpr auto slider_scripts = tarn::script_rows({EVENT_SLIDER_DRAGGED});

// Scroll bars: the page edits the current one alone.

using ScrollBar = tarn::ScrollBarState;
const SelectedControls scroll_bars{DXUT_CONTROL_SCROLLBAR};

constexpr FieldRow scroll_row(int control, tarn::FieldKey field)
{
    return {.control = control, .field = field, .scope = Scope::Current, .number = {.format = "%1.0f"}};
}

constexpr FieldRow scroll_rows[] = {
    scroll_row(6380, key<&ScrollBar::min>),
    scroll_row(6358, key<&ScrollBar::max>),
    scroll_row(6381, key<&ScrollBar::position>),
    scroll_row(6896, key<&ScrollBar::page_size>),
};
constexpr auto scroll_scripts = tarn::script_rows({EVENT_SCROLLBAR_CHANGED});

// Edit boxes

using EditBox = tarn::EditBoxState;
const SelectedControls edit_boxes{DXUT_CONTROL_EDITBOX};

constexpr FieldRow text_row(int control, tarn::FieldKey field)
{
    FieldRow row = type_row(control, field);
    row.reset = tarn::Default::None;
    return row;
}

using Seen = Value (*)(const ModelObject&, const Value&, tarn::Part);

constexpr FieldRow color_row(int control, tarn::FieldKey field, Seen seen)
{
    FieldRow row = type_row(control, field);
    row.conversion = {.shown = seen, .stored = tarn::chosen_color};
    row.blank_color = 0xffffffff;
    return row;
}

constexpr FieldRow edit_rows[] = {
    text_row(6379, key<&Static::text>),
    text_row(6888, key<&EditBox::placeholder>),
    number_row(type_row(6375, key<&EditBox::spacing>), {.format = "%0.0f"}),
    number_row(type_row(6883, key<&EditBox::border>), {.format = "%0.0f"}),
    number_row(type_row(6884, key<&EditBox::max_length>), {.format = "%0.0f"}),
    type_row(6885, key<&EditBox::password>),
    type_row(6886, key<&EditBox::numbers_only>),
    type_row(6887, key<&EditBox::read_only>),
    color_row(6889, key<&Static::text_color>, tarn::seen_text_color<tarn::VisualState::Normal>),
    color_row(6890, key<&EditBox::selection_color>, tarn::seen_color<tarn::edit_box_selection>),
    color_row(6891, key<&EditBox::caret_color>, tarn::seen_color<tarn::edit_box_caret>),
    color_row(6892, key<&EditBox::border_color>, tarn::seen_color<tarn::edit_box_border>),
};
constexpr auto edit_scripts = tarn::script_rows({EVENT_EDITBOX_ENTER});

// Combo and list boxes: the list of the page is that of the current control, and so is what is chosen in it.

const SelectedControls combo_boxes{DXUT_CONTROL_COMBOBOX};
const SelectedControls list_boxes{DXUT_CONTROL_LISTBOX};

/// One counter for all combo boxes, as long as the program runs.
QString new_combo_item()
{
    static int count = 0;
    return QStringLiteral("NewItem%1").arg(count++);
}

QString new_list_item()
{
    return QStringLiteral("New Item");
}

constexpr FieldRow items_row(int control, tarn::FieldKey field, tarn::ListControls list)
{
    list.edit = 6395;
    list.up = 6893;
    list.down = 6894;
    list.paste = 6895;
    list.chosen = key<&tarn::ItemsState::selected>;
    return {.control = control,
            .field = field,
            .scope = Scope::Current,
            .follows = tarn::Follows::Redraw,
            .reset = tarn::Default::None,
            .list = list};
}

constexpr FieldRow combo_rows[] = {
    items_row(6538, key<&tarn::ItemsState::items>, {.add = 6540, .remove = 6120, .new_text = new_combo_item})};
constexpr ScriptRow combo_scripts[] = {{EVENT_COMBOBOX_SELECTION_CHANGED, 6121, 6122}};
constexpr FieldRow list_rows[] = {
    items_row(6387, key<&tarn::ItemsState::items>, {.add = 6390, .remove = 6392, .new_text = new_list_item})};
constexpr ScriptRow list_scripts[] = {{EVENT_LISTBOX_CLICKED, 6410, 6415}, {EVENT_LISTBOX_DOUBLE_CLICKED, 6053, 6422}};

// Pictures

using Picture = tarn::PictureState;
const SelectedControls picture_controls{DXUT_CONTROL_PICTURE};
constexpr FieldRow picture_rows[] = {
    tarn::caption_row,
    type_row(6097, key<&Static::horizontal_align>),
    type_row(6525, key<&Static::vertical_align>),
    type_row(6902, key<&Picture::stretch>),
};
constexpr ImageRow picture_images[] = {{6899, 6900, key<&Picture::image>}};
constexpr ActionRow picture_actions[] = {{6901, tarn::size_to_pictures<picture_images, check_lacks_picture>}};

// Pictures in pictures and maps: the pages edit the current one alone.

constexpr FieldRow media_row(int control, tarn::FieldKey field, NumberLook number = {})
{
    return {.control = control,
            .field = field,
            .scope = Scope::Current,
            .follows = tarn::Follows::Redraw,
            .number = number};
}

using PictureInPicture = tarn::PictureInPictureState;
const SelectedControls picture_in_pictures{DXUT_CONTROL_PIP};
constexpr FieldRow picture_in_picture_rows[] = {
    media_row(6905, key<&PictureInPicture::background_color>),
    media_row(6906, key<&PictureInPicture::frame_shown>),
};
constexpr SceneObjectRow picture_in_picture_objects[] = {
    {6903, 6904, key<&PictureInPicture::camera>, tarn::SceneObjectKind::Camera}};

using Map = tarn::MapState;
const SelectedControls maps{DXUT_CONTROL_MAP};

constexpr FieldRow map_rows[] = {
    media_row(6262, key<&Map::range_top>),
    media_row(6049, key<&Map::range_left>),
    media_row(6050, key<&Map::range_bottom>),
    media_row(6051, key<&Map::range_right>),
    media_row(6275, key<&Map::lock_center>),
    media_row(6263, key<&Map::default_scale>, {.step = 0.1}),
    media_row(6277, key<&Map::zoom_rate>, {.step = 0.1}),
    media_row(6299, key<&Map::zoom_in_x>, whole),
    media_row(6617, key<&Map::zoom_in_y>, whole),
    media_row(6300, key<&Map::zoom_out_x>, whole),
    media_row(6298, key<&Map::zoom_out_y>, whole),
    media_row(6302, key<&Map::eagle_eye>),
};
constexpr ImageRow map_images[] = {
    {6267, 6264, key<&Map::image_map>},
    {6273, 6265, key<&Map::image_surface>},
    {6274, 6266, key<&Map::image_base>},
};
constexpr SceneObjectRow map_objects[] = {{6303, 6619, key<&Map::camera_model>, tarn::SceneObjectKind::Model}};
constexpr auto map_scripts = tarn::script_rows(
    {EVENT_MAP_HOT_SPOT_SHOWN, EVENT_MAP_HOT_SPOT_HIDDEN, EVENT_MAP_HINT_CLICKED});

CBoundPage* new_flash_page()
{
    return new CDlgPropFlash;
}

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
    {.class_name = "CDlgPropCombo",
     .template_id = 6391,
     .target = &combo_boxes,
     .rows = combo_rows,
     .scripts = combo_scripts},
    {.class_name = "CDlgPropSlider",
     .template_id = 6010,
     .target = &sliders,
     .rows = slider_rows,
     .scripts = slider_scripts},
    {.class_name = "CDlgPropEdit",
     .template_id = 6008,
     .target = &edit_boxes,
     .rows = edit_rows,
     .scripts = edit_scripts},
    {.class_name = "CDlgPropListBox",
     .template_id = 6011,
     .target = &list_boxes,
     .rows = list_rows,
     .scripts = list_scripts},
    {.class_name = "CDlgPropScrollbar",
     .template_id = 6350,
     .target = &scroll_bars,
     .rows = scroll_rows,
     .scripts = scroll_scripts},
    {.class_name = "CDlgPropButtonST",
     .template_id = 6388,
     .target = &image_buttons,
     .rows = image_button_rows,
     .scripts = button_scripts,
     .images = image_button_images,
     .set_image = &CGuiPlugScene::set_buttonst_img,
     .actions = image_button_actions},
    {.class_name = "CDlgPropPicture",
     .template_id = 6374,
     .target = &picture_controls,
     .rows = picture_rows,
     .images = picture_images,
     .set_image = &CGuiPlugScene::set_imgctrl_img,
     .actions = picture_actions},
    {.class_name = "CPropDlgInfoBox",
     .template_id = 6369,
     .target = &info_boxes,
     .rows = info_box_rows,
     .actions = info_box_actions},
    {.class_name = "CDlgPropFlash", .template_id = 6560, .target = &tarn::flash_controls, .make = new_flash_page},
    {.class_name = "CDlgPropProgressBar",
     .template_id = 6573,
     .target = &progress_bars,
     .rows = progress_rows,
     .images = progress_images},
    {.class_name = "CDlgPropPictureInPicture",
     .template_id = 6609,
     .target = &picture_in_pictures,
     .rows = picture_in_picture_rows,
     .objects = picture_in_picture_objects},
    {.class_name = "CDlgPropMap",
     .template_id = 6611,
     .target = &maps,
     .rows = map_rows,
     .scripts = map_scripts,
     .images = map_images,
     .set_image = &CGuiPlugScene::set_map_img,
     .objects = map_objects},
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
