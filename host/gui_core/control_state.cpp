#include "control_state.h"

#include "anchor.h"
#include "core/field.h"

namespace tarn {

namespace {

constexpr double max_place = 1e6; ///< pixels; keeps sums of places exact in a float
constexpr double max_turn = 7200; ///< degrees

/// The table of a type that shows a text: the text's attributes, whose default alignment the type chooses, then `more`.
template <class S, class... More>
FieldTable text_table(int horizontal_align, int vertical_align, More... more)
{
    return FieldTable(&ControlState::field_table(), field<S, &S::text>("text", QString(), max_length(999999)),
                      field<S, &S::text_color>("text_color", 0u),
                      field<S, &S::font_size>("font_size", 0, range(0, 500)), field<S, &S::bold>("bold", false),
                      field<S, &S::horizontal_align>("horizontal_align", horizontal_align, range(0, 2)),
                      field<S, &S::vertical_align>("vertical_align", vertical_align, range(0, 2)),
                      field<S, &S::word_wrap>("word_wrap", false), field<S, &S::shadow>("shadow", false),
                      std::move(more)...);
}

} // namespace

template <float ControlExtras::*own, float ControlState::*size>
float CenterAccess<own, size>::get(const ControlState& s) const
{
    return s.extras->has_center ? s.extras.get().*own : s.*size / 2;
}

template <float ControlExtras::*own, float ControlState::*size>
void CenterAccess<own, size>::set(ControlState& s, float value) const
{
    s.extras.edit([&](ControlExtras& extras) {
        if (!extras.has_center) {
            extras.center_x = s.width / 2;
            extras.center_y = s.height / 2;
        }
        extras.has_center = true;
        extras.*own = value;
    });
}

template <float ControlExtras::*own, float ControlState::*size>
bool CenterAccess<own, size>::is_default(const ControlState& s) const
{
    return !s.extras->has_center;
}

template <float ControlExtras::*own, float ControlState::*size>
void CenterAccess<own, size>::copy(const ControlState& from, ControlState& to) const
{
    if (from.extras->has_center)
        return set(to, get(from));
    to.extras.edit([](ControlExtras& extras) {
        extras.has_center = false;
        extras.center_x = extras.center_y = 0;
    });
}

int ScaleModeAccess::get(const ControlState& s) const
{
    return s.align_type == anchor_scale;
}

void ScaleModeAccess::set(ControlState& s, int mode) const
{
    if (mode == get(s))
        return;
    const int saved = mode ? s.align_type : 0;
    s.align_type = mode ? int(anchor_scale) : s.extras->saved_align_type;
    s.extras.edit([&](ControlExtras& extras) { extras.saved_align_type = saved; });
}

bool ScaleModeAccess::is_default(const ControlState& s) const
{
    return get(s) == 0;
}

const FieldTable& ControlState::field_table()
{
    using S = ControlState;
    using E = ControlExtras;
    static const FieldTable table(
        nullptr, field<S, &S::id>("id", quint32(0), read_only()), field<S, &S::name>("name"),
        field<S, &S::type>("type", -1, read_only()), field<S, &S::parent>("dialog", ObjectRef{}, read_only()),
        field<S, &S::x>("x", 0.f, range(-max_place, max_place)),
        field<S, &S::y>("y", 0.f, range(-max_place, max_place)),
        field<S, &S::width>("width", 100.f, range(0, max_place)),
        field<S, &S::height>("height", 24.f, range(0, max_place)), field<S, &S::visible>("visible", true),
        field<S, &S::enabled>("enabled", true), field<S, &S::locked>("locked", false),
        field<S, &S::color_tag>("color_tag", 0xffffffffu), field<S, &S::align_type>("align_type", 0, range(0, 9)),
        field<S, &S::base_width>("base_width", 0.f, range(0, max_place)),
        field<S, &S::base_height>("base_height", 0.f, range(0, max_place)),
        field<S, &S::extras, &E::saved_align_type>("saved_align_type", range(0, 8)),
        field<S, &S::extras, &E::tab_order>("tab_order", range(0, 9999)),
        computed_field<S, ScaleModeAccess>("scale_mode", {.minimum = 0, .maximum = 1, .derived = true}),
        field<S, &S::extras, &E::rotation>("rotation", range(-max_turn, max_turn)),
        computed_field<S, CenterXAccess>("center_x", range(-max_place, max_place)),
        computed_field<S, CenterYAccess>("center_y", range(-max_place, max_place)),
        field<S, &S::extras, &E::color>("color"), field<S, &S::extras, &E::transparency>("transparency", range(0, 1)),
        field<S, &S::extras, &E::style_images>("style_images", picture_name()),
        field<S, &S::extras, &E::style_colors>("style_colors"),
        field<S, &S::extras, &E::style_text_colors>("style_text_colors"),
        field<S, &S::extras, &E::font_family>("font_family", max_length(100)),
        field<S, &S::extras, &E::font_italic>("font_italic"),
        field<S, &S::extras, &E::right_click_menu>("right_click_menu"));
    return table;
}

const FieldTable& StaticState::field_table()
{
    static const FieldTable table = text_table<StaticState>(0, 0);
    return table;
}

ButtonState::ButtonState()
{
    type = DXUT_CONTROL_BUTTON;
    horizontal_align = 1;
    vertical_align = 1;
}

const FieldTable& ButtonState::field_table()
{
    using S = ButtonState;
    static const FieldTable table = text_table<S>(1, 1, field<S, &S::extras, &ControlExtras::click_menu>("click_menu"));
    return table;
}

CheckBoxState::CheckBoxState(int control_type)
{
    type = control_type;
    vertical_align = 1;
}

const FieldTable& CheckBoxState::field_table()
{
    using S = CheckBoxState;
    static const FieldTable table = text_table<S>(
        0, 1, field<S, &S::checked>("checked", false),
        field<S, &S::image_unchecked>("image_unchecked", QString(), picture_name()),
        field<S, &S::image_checked>("image_checked", QString(), picture_name()));
    return table;
}

RadioButtonState::RadioButtonState()
{
    type = DXUT_CONTROL_RADIOBUTTON;
}

const FieldTable& RadioButtonState::field_table()
{
    using S = RadioButtonState;
    static const FieldTable table(&CheckBoxState::field_table(), field<S, &S::group>("group", 0));
    return table;
}

ImageButtonState::ImageButtonState()
{
    type = DXUT_CONTROL_BUTTONST;
    horizontal_align = 1;
    vertical_align = 1;
}

const FieldTable& ImageButtonState::field_table()
{
    using S = ImageButtonState;
    static const FieldTable table = text_table<S>(
        1, 1, field<S, &S::image_normal>("image_normal", QString(), picture_name()),
        field<S, &S::image_hover>("image_hover", QString(), picture_name()),
        field<S, &S::image_pressed>("image_pressed", QString(), picture_name()),
        field<S, &S::annotation_mode>("annotation_mode", false),
        field<S, &S::annotation_x>("annotation_x", 0, range(-9999, 9999)),
        field<S, &S::annotation_y>("annotation_y", 0, range(-9999, 9999)),
        field<S, &S::extras, &ControlExtras::click_menu>("click_menu"));
    return table;
}

PictureState::PictureState()
{
    type = DXUT_CONTROL_PICTURE;
    horizontal_align = 1;
    vertical_align = 1;
}

const FieldTable& PictureState::field_table()
{
    using S = PictureState;
    static const FieldTable table = text_table<S>(1, 1, field<S, &S::image>("image", QString(), picture_name()),
                                                  field<S, &S::stretch>("stretch", true));
    return table;
}

EditBoxState::EditBoxState()
{
    type = DXUT_CONTROL_EDITBOX;
    vertical_align = 1;
}

const FieldTable& EditBoxState::field_table()
{
    using S = EditBoxState;
    static const FieldTable table = text_table<S>(
        0, 1, field<S, &S::spacing>("spacing", 4, range(0, 100)), field<S, &S::border>("border", 0, range(0, 100)),
        field<S, &S::max_length>("max_length", 0, range(0, 10000)), field<S, &S::password>("password", false),
        field<S, &S::numbers_only>("numbers_only", false), field<S, &S::read_only>("read_only", false),
        field<S, &S::placeholder>("placeholder", QString(), tarn::max_length(S::max_placeholder)),
        field<S, &S::selection_color>("selection_color", 0u), field<S, &S::caret_color>("caret_color", 0u),
        field<S, &S::border_color>("border_color", 0u));
    return table;
}

void EditBoxState::settle(const WrittenFields&)
{
    if (max_length > 0)
        text = cut_text(text, max_length);
}

ProgressState::ProgressState()
{
    type = DXUT_CONTROL_PROGRESS;
    horizontal_align = 1;
    vertical_align = 1;
}

const FieldTable& ProgressState::field_table()
{
    using S = ProgressState;
    static const FieldTable table = text_table<S>(
        1, 1, field<S, &S::percent>("percent", 50.f, range(0, 100)),
        field<S, &S::total>("total", 100, range(0, 999999)), field<S, &S::border>("border", 2, range(0, 10)),
        field<S, &S::render_state>("render_state", true), field<S, &S::percent_display>("percent_display", true),
        field<S, &S::info_display>("info_display", false), field<S, &S::texture_stretch>("texture_stretch", true),
        field<S, &S::integer_display>("integer_display", false), field<S, &S::message>("message"),
        field<S, &S::image>("image", QString(), picture_name()));
    return table;
}

InfoBoxState::InfoBoxState()
{
    type = DXUT_CONTROL_INFOBOX;
}

const FieldTable& InfoBoxState::field_table()
{
    using S = InfoBoxState;
    static const FieldTable table = text_table<S>(
        0, 0, field<S, &S::lines>("lines", QStringList(), max_length(S::max_line_length)),
        field<S, &S::line_height>("line_height", 18, range(6, 500)),
        field<S, &S::max_lines>("max_lines", 200, range(1, 100000)));
    return table;
}

void InfoBoxState::settle(const WrittenFields&)
{
    if (lines.size() > max_lines)
        lines.remove(0, lines.size() - max_lines);
}

} // namespace tarn
