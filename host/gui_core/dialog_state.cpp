#include "dialog_state.h"

#include "core/field.h"

namespace tarn {

namespace {

constexpr double max_place = 1e6;
constexpr quint32 root_id = 1;

} // namespace

DialogState* DialogState::root()
{
    auto* state = new DialogState;
    state->id = root_id;
    state->name = QStringLiteral("ROOT");
    state->caption_shown = false;
    state->frame_shown = false;
    return state;
}

const FieldTable& DialogState::field_table()
{
    using S = DialogState;
    static const FieldTable table(
        nullptr, field<S>("id", &S::id, quint32(0), read_only()), field<S>("name", &S::name, QString(), max_length(31)),
        field<S>("caption", &S::caption), field<S>("x", &S::x, 0, range(-max_place, max_place)),
        field<S>("y", &S::y, 0, range(-max_place, max_place)), field<S>("width", &S::width, 200, range(0, max_place)),
        field<S>("height", &S::height, 150, range(0, max_place)),
        field<S>("caption_height", &S::caption_height, 24, range(0, 9999)),
        field<S>("caption_shown", &S::caption_shown, true), field<S>("frame_shown", &S::frame_shown, true),
        field<S>("minimize_button", &S::minimize_button, false), field<S>("movable", &S::movable, true),
        field<S>("close_button", &S::close_button, true), field<S>("border_width", &S::border_width, 0, range(0, 100)),
        field<S>("align_type", &S::align_type, 0, range(0, 9)),
        field<S>("saved_align_type", &S::saved_align_type, 0, range(0, 9)),
        field<S>("minimize_to_bottom", &S::minimize_to_bottom, false),
        field<S>("always_on_top", &S::always_on_top, false), field<S>("visible", &S::visible, true),
        field<S>("base_width", &S::base_width, 0, range(0, max_place)),
        field<S>("base_height", &S::base_height, 0, range(0, max_place)),
        field<S>("bind_texture", &S::bind_texture, QString(), picture_name()),
        field<S>("bind_color", &S::bind_color, 0xffffffffu), field<S>("bind_mouse", &S::bind_mouse, false),
        field<S>("controls", &S::controls, {}, children()));
    return table;
}

const FieldTable& CoreState::field_table()
{
    using S = CoreState;
    static const FieldTable table(nullptr, field<S>("screen_width", &S::screen_width, 0, range(1, 32767)),
                                  field<S>("screen_height", &S::screen_height, 0, range(1, 32767)),
                                  field<S>("vertical_guides", &S::vertical_guides),
                                  field<S>("horizontal_guides", &S::horizontal_guides),
                                  field<S>("dialogs", &S::dialogs, {}, children()));
    return table;
}

} // namespace tarn
