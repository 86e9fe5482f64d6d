#include "control_state.h"

#include "core/field.h"

#include <algorithm>

// The attributes of the types that hold items, values or media.

namespace tarn {

namespace {

constexpr double max_value = 1e6;
constexpr double max_place = 1e6; ///< metres or pixels

/// Of two ends that crossed, the one that was written last stays: the upper one when `max_moved`.
void keep_in_range(int& min, int& max, int& value, bool max_moved)
{
    if (min > max)
        (max_moved ? min : max) = max_moved ? max : min;
    value = std::clamp(value, min, max);
}

} // namespace

void ItemsState::settle(const WrittenFields&)
{
    selected = std::clamp(selected, -1, int(items.size()) - 1);
}

void SliderState::settle(const WrittenFields& written)
{
    keep_in_range(min, max, value, !written.contains(key<&SliderState::min>));
}

void ScrollBarState::settle(const WrittenFields& written)
{
    keep_in_range(min, max, position, !written.contains(key<&ScrollBarState::min>));
}

const FieldTable& ComboBoxState::field_table()
{
    using S = ComboBoxState;
    static const FieldTable table(&ControlState::field_table(),
                                  field<S, &S::items>("items", QStringList(), max_length(max_item_length)),
                                  field<S, &S::selected>("selected", -1, range(-1, max_value)));
    return table;
}

const FieldTable& ListBoxState::field_table()
{
    using S = ListBoxState;
    static const FieldTable table(&ControlState::field_table(),
                                  field<S, &S::items>("items", QStringList(), max_length(max_item_length)),
                                  field<S, &S::selected>("selected", -1, range(-1, max_value)));
    return table;
}

const FieldTable& SliderState::field_table()
{
    using S = SliderState;
    static const FieldTable table(&ControlState::field_table(),
                                  field<S, &S::min>("min", 0, range(-max_value, max_value)),
                                  field<S, &S::max>("max", 100, range(-max_value, max_value)),
                                  field<S, &S::value>("value", 50, range(-max_value, max_value)));
    return table;
}

const FieldTable& ScrollBarState::field_table()
{
    using S = ScrollBarState;
    static const FieldTable table(&ControlState::field_table(), field<S, &S::min>("min", 0, range(-9999, 9999)),
                                  field<S, &S::max>("max", 100, range(-9999, 9999)),
                                  field<S, &S::position>("position", 0, range(-9999, 9999)),
                                  field<S, &S::page_size>("page_size", 10, range(1, 9999)));
    return table;
}

const FieldTable& FlashState::field_table()
{
    using S = FlashState;
    static const FieldTable table(
        &ControlState::field_table(), field<S, &S::source>("source"), field<S, &S::source_local>("source_local", true),
        field<S, &S::high_priority>("high_priority", false), field<S, &S::script_download>("script_download", false),
        field<S, &S::keep_size>("keep_size", false), field<S, &S::transparent>("transparent", false),
        field<S, &S::keep_global>("keep_global", false), field<S, &S::mouse_input>("mouse_input", true),
        field<S, &S::keyboard_input>("keyboard_input", false), field<S, &S::chinese_input>("chinese_input", false),
        field<S, &S::translucency>("translucency", 0, range(0, 100)), field<S, &S::reload>("reload", true),
        field<S, &S::callbacks>("callbacks", QStringList(), {.max_length = 600, .function = true}));
    return table;
}

const FieldTable& PictureInPictureState::field_table()
{
    using S = PictureInPictureState;
    static const FieldTable table(&ControlState::field_table(), field<S, &S::camera>("camera"),
                                  field<S, &S::background_color>("background_color", 0xff202830u),
                                  field<S, &S::frame_shown>("frame_shown", true));
    return table;
}

const FieldTable& MapState::field_table()
{
    using S = MapState;
    static const FieldTable table(
        &ControlState::field_table(), field<S, &S::image_map>("image_map", QString(), picture_name()),
        field<S, &S::image_surface>("image_surface", QString(), picture_name()),
        field<S, &S::image_base>("image_base", QString(), picture_name()),
        field<S, &S::range_top>("range_top", 100.f, range(-max_place, max_place)),
        field<S, &S::range_left>("range_left", -100.f, range(-max_place, max_place)),
        field<S, &S::range_bottom>("range_bottom", -100.f, range(-max_place, max_place)),
        field<S, &S::range_right>("range_right", 100.f, range(-max_place, max_place)),
        field<S, &S::lock_center>("lock_center", true),
        field<S, &S::default_scale>("default_scale", 1.f, range(0.0625, 100)),
        field<S, &S::zoom_rate>("zoom_rate", 1.2f, range(1, 10)),
        field<S, &S::zoom_in_x>("zoom_in_x", 8, range(-max_place, max_place)),
        field<S, &S::zoom_in_y>("zoom_in_y", 8, range(-max_place, max_place)),
        field<S, &S::zoom_out_x>("zoom_out_x", 8, range(-max_place, max_place)),
        field<S, &S::zoom_out_y>("zoom_out_y", 36, range(-max_place, max_place)),
        field<S, &S::eagle_eye>("eagle_eye", false), field<S, &S::camera_model>("camera_model"));
    return table;
}

} // namespace tarn
