#include "control_state.h"

#include "core/field.h"

// The attributes of the types that hold items, values or media.

namespace tarn {

namespace {

constexpr double max_value = 1e6;
constexpr double max_place = 1e6; ///< metres or pixels

} // namespace

const FieldTable& ComboBoxState::field_table()
{
    using S = ComboBoxState;
    static const FieldTable table(&ControlState::field_table(),
                                  field<S>("items", &S::items, QStringList(), max_length(max_item_length)),
                                  field<S>("selected", &S::selected, -1, range(-1, max_value)));
    return table;
}

const FieldTable& ListBoxState::field_table()
{
    using S = ListBoxState;
    static const FieldTable table(&ControlState::field_table(),
                                  field<S>("items", &S::items, QStringList(), max_length(max_item_length)),
                                  field<S>("selected", &S::selected, -1, range(-1, max_value)));
    return table;
}

const FieldTable& SliderState::field_table()
{
    using S = SliderState;
    static const FieldTable table(&ControlState::field_table(),
                                  field<S>("min", &S::min, 0, range(-max_value, max_value)),
                                  field<S>("max", &S::max, 100, range(-max_value, max_value)),
                                  field<S>("value", &S::value, 50, range(-max_value, max_value)));
    return table;
}

const FieldTable& ScrollBarState::field_table()
{
    using S = ScrollBarState;
    static const FieldTable table(&ControlState::field_table(), field<S>("min", &S::min, 0, range(-9999, 9999)),
                                  field<S>("max", &S::max, 100, range(-9999, 9999)),
                                  field<S>("position", &S::position, 0, range(-9999, 9999)),
                                  field<S>("page_size", &S::page_size, 10, range(1, 9999)));
    return table;
}

const FieldTable& FlashState::field_table()
{
    using S = FlashState;
    static const FieldTable table(
        &ControlState::field_table(), field<S>("source", &S::source), field<S>("source_local", &S::source_local, true),
        field<S>("high_priority", &S::high_priority, false), field<S>("script_download", &S::script_download, false),
        field<S>("keep_size", &S::keep_size, false), field<S>("transparent", &S::transparent, false),
        field<S>("keep_global", &S::keep_global, false), field<S>("mouse_input", &S::mouse_input, true),
        field<S>("keyboard_input", &S::keyboard_input, false), field<S>("chinese_input", &S::chinese_input, false));
    return table;
}

const FieldTable& PictureInPictureState::field_table()
{
    using S = PictureInPictureState;
    static const FieldTable table(&ControlState::field_table(), field<S>("camera", &S::camera),
                                  field<S>("background_color", &S::background_color, 0xff202830u),
                                  field<S>("frame_shown", &S::frame_shown, true));
    return table;
}

const FieldTable& MapState::field_table()
{
    using S = MapState;
    static const FieldTable table(
        &ControlState::field_table(), field<S>("image_map", &S::image_map, QString(), picture_name()),
        field<S>("image_surface", &S::image_surface, QString(), picture_name()),
        field<S>("image_base", &S::image_base, QString(), picture_name()),
        field<S>("range_top", &S::range_top, 100.f, range(-max_place, max_place)),
        field<S>("range_left", &S::range_left, -100.f, range(-max_place, max_place)),
        field<S>("range_bottom", &S::range_bottom, -100.f, range(-max_place, max_place)),
        field<S>("range_right", &S::range_right, 100.f, range(-max_place, max_place)),
        field<S>("lock_center", &S::lock_center, true),
        field<S>("default_scale", &S::default_scale, 1.f, range(0.0625, 100)),
        field<S>("zoom_rate", &S::zoom_rate, 1.2f, range(1, 10)),
        field<S>("zoom_in_x", &S::zoom_in_x, 8, range(-max_place, max_place)),
        field<S>("zoom_in_y", &S::zoom_in_y, 8, range(-max_place, max_place)),
        field<S>("zoom_out_x", &S::zoom_out_x, 8, range(-max_place, max_place)),
        field<S>("zoom_out_y", &S::zoom_out_y, 36, range(-max_place, max_place)),
        field<S>("eagle_eye", &S::eagle_eye, false), field<S>("camera_model", &S::camera_model));
    return table;
}

} // namespace tarn
