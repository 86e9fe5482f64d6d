#include "control_state.h"

#include "anchor.h"
#include "control_style.h"
#include "core/field.h"

namespace tarn {

namespace {

constexpr double max_place = 1e6; ///< pixels; keeps sums of places exact in a float
constexpr double max_turn = 7200; ///< degrees

/// One coordinate of the rotation centre. A control has both of its own, or neither.
template <float ControlExtras::*own, float ControlState::*size>
struct CenterAccess {
    using Type = float;

    float get(const ControlState& s) const { return s.extras->has_center ? s.extras.get().*own : s.*size / 2; }
    void set(ControlState& s, float value) const
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
    bool is_default(const ControlState& s) const { return !s.extras->has_center; }
};

/// Whether the control scales with its dialog is a matter of its anchor.
struct ScaleModeAccess {
    using Type = int;

    int get(const ControlState& s) const { return s.align_type == anchor_scale; }
    void set(ControlState& s, int mode) const
    {
        if (mode == get(s))
            return;
        const int saved = mode ? s.align_type : 0;
        s.align_type = mode ? int(anchor_scale) : s.extras->saved_align_type;
        s.extras.edit([&](ControlExtras& extras) { extras.saved_align_type = saved; });
    }
    bool is_default(const ControlState& s) const { return get(s) == 0; }
};

/// The table of a type that shows a text: the text's attributes, whose default alignment the type chooses, then `more`.
template <class S, class... More>
FieldTable text_table(int horizontal_align, int vertical_align, More... more)
{
    return FieldTable(&ControlState::field_table(), field<S>("text", &S::text, QString(), max_length(999999)),
                      field<S>("text_color", &S::text_color, 0u),
                      field<S>("font_size", &S::font_size, 0, range(0, 500)), field<S>("bold", &S::bold, false),
                      field<S>("horizontal_align", &S::horizontal_align, horizontal_align, range(0, 2)),
                      field<S>("vertical_align", &S::vertical_align, vertical_align, range(0, 2)),
                      field<S>("word_wrap", &S::word_wrap, false), field<S>("shadow", &S::shadow, false),
                      std::move(more)...);
}

} // namespace

const FieldTable& ControlState::field_table()
{
    using S = ControlState;
    using E = ControlExtras;
    static const FieldTable table(
        nullptr, field<S>("id", &S::id, quint32(0), read_only()), field<S>("name", &S::name),
        field<S>("type", &S::type, -1, read_only()), field<S>("dialog", &S::parent, ObjectRef{}, read_only()),
        field<S>("x", &S::x, 0.f, range(-max_place, max_place)),
        field<S>("y", &S::y, 0.f, range(-max_place, max_place)),
        field<S>("width", &S::width, 100.f, range(0, max_place)),
        field<S>("height", &S::height, 24.f, range(0, max_place)), field<S>("visible", &S::visible, true),
        field<S>("enabled", &S::enabled, true), field<S>("locked", &S::locked, false),
        field<S>("color_tag", &S::color_tag, 0xffffffffu), field<S>("align_type", &S::align_type, 0, range(0, 9)),
        field<S>("base_width", &S::base_width, 0.f, range(0, max_place)),
        field<S>("base_height", &S::base_height, 0.f, range(0, max_place)),
        field<S>("saved_align_type", &S::extras, &E::saved_align_type, range(0, 8)),
        computed_field<S, ScaleModeAccess>("scale_mode", {.minimum = 0, .maximum = 1, .derived = true}),
        field<S>("rotation", &S::extras, &E::rotation, range(-max_turn, max_turn)),
        computed_field<S, CenterAccess<&E::center_x, &S::width>>("center_x", range(-max_place, max_place)),
        computed_field<S, CenterAccess<&E::center_y, &S::height>>("center_y", range(-max_place, max_place)),
        field<S>("style_images", &S::extras, &E::style_images, {.picture = true, .slots = style_slot_count}),
        field<S>("style_colors", &S::extras, &E::style_colors, slots(style_slot_count)),
        field<S>("style_text_colors", &S::extras, &E::style_text_colors, slots(style_state_count)),
        field<S>("font_family", &S::extras, &E::font_family, max_length(100)),
        field<S>("font_italic", &S::extras, &E::font_italic));
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
    static const FieldTable table = text_table<ButtonState>(1, 1);
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
        0, 1, field<S>("checked", &S::checked, false),
        field<S>("image_unchecked", &S::image_unchecked, QString(), picture_name()),
        field<S>("image_checked", &S::image_checked, QString(), picture_name()));
    return table;
}

RadioButtonState::RadioButtonState()
{
    type = DXUT_CONTROL_RADIOBUTTON;
}

const FieldTable& RadioButtonState::field_table()
{
    using S = RadioButtonState;
    static const FieldTable table(&CheckBoxState::field_table(), field<S>("group", &S::group, 0));
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
        1, 1, field<S>("image_normal", &S::image_normal, QString(), picture_name()),
        field<S>("image_hover", &S::image_hover, QString(), picture_name()),
        field<S>("image_pressed", &S::image_pressed, QString(), picture_name()),
        field<S>("annotation_mode", &S::annotation_mode, false),
        field<S>("annotation_x", &S::annotation_x, 0, range(-9999, 9999)),
        field<S>("annotation_y", &S::annotation_y, 0, range(-9999, 9999)));
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
    static const FieldTable table = text_table<S>(1, 1, field<S>("image", &S::image, QString(), picture_name()),
                                                  field<S>("stretch", &S::stretch, true));
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
        0, 1, field<S>("spacing", &S::spacing, 4, range(0, 100)), field<S>("border", &S::border, 0, range(0, 100)),
        field<S>("max_length", &S::max_length, 0, range(0, 10000)), field<S>("password", &S::password, false));
    return table;
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
        1, 1, field<S>("percent", &S::percent, 50.f, range(0, 100)),
        field<S>("total", &S::total, 100, range(0, 999999)), field<S>("border", &S::border, 2, range(0, 10)),
        field<S>("render_state", &S::render_state, true), field<S>("percent_display", &S::percent_display, true),
        field<S>("info_display", &S::info_display, false), field<S>("texture_stretch", &S::texture_stretch, true),
        field<S>("integer_display", &S::integer_display, false), field<S>("message", &S::message),
        field<S>("image", &S::image, QString(), picture_name()));
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
        0, 0, field<S>("lines", &S::lines, QStringList(), max_length(S::max_line_length)),
        field<S>("line_height", &S::line_height, 18, range(6, 500)),
        field<S>("max_lines", &S::max_lines, 200, range(1, 100000)));
    return table;
}

} // namespace tarn
