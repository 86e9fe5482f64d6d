#include "dialog_state.h"

#include "core/field.h"

#include <algorithm>
#include <functional>

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
        nullptr, field<S, &S::id>("id", quint32(0), read_only()), field<S, &S::name>("name", QString(), max_length(31)),
        field<S, &S::caption>("caption"), field<S, &S::x>("x", 0, range(-max_place, max_place)),
        field<S, &S::y>("y", 0, range(-max_place, max_place)), field<S, &S::width>("width", 200, range(0, max_place)),
        field<S, &S::height>("height", 150, range(0, max_place)),
        field<S, &S::caption_height>("caption_height", 24, range(0, 9999)),
        field<S, &S::caption_shown>("caption_shown", true), field<S, &S::frame_shown>("frame_shown", true),
        field<S, &S::minimize_button>("minimize_button", false), field<S, &S::movable>("movable", true),
        field<S, &S::close_button>("close_button", true), field<S, &S::border_width>("border_width", 0, range(0, 100)),
        field<S, &S::align_type>("align_type", 0, range(0, 9)),
        field<S, &S::saved_align_type>("saved_align_type", 0, range(0, 9)),
        field<S, &S::minimize_to_bottom>("minimize_to_bottom", false),
        field<S, &S::always_on_top>("always_on_top", false), field<S, &S::visible>("visible", true),
        field<S, &S::color>("color", 0xffffffffu), field<S, &S::transparency>("transparency", 0.f, range(0, 1)),
        field<S, &S::base_width>("base_width", 0, range(0, max_place)),
        field<S, &S::base_height>("base_height", 0, range(0, max_place)),
        field<S, &S::bind_texture>("bind_texture", QString(), picture_name()),
        field<S, &S::bind_color>("bind_color", 0xffffffffu), field<S, &S::bind_mouse>("bind_mouse", true),
        field<S, &S::right_click_menu>("right_click_menu"), field<S, &S::controls>("control_ids", {}, children()));
    return table;
}

const FieldTable& CoreState::field_table()
{
    using S = CoreState;
    static const FieldTable table(
        nullptr, field<S, &S::screen_width>("screen_width", 0, range(1, 32767)),
        field<S, &S::screen_height>("screen_height", 0, range(1, 32767)),
        field<S, &S::vertical_guides>("vertical_guides"), field<S, &S::horizontal_guides>("horizontal_guides"),
        field<S, &S::scene_style>("scene_style"), field<S, &S::animation_speed>("animation_speed", 1.f, range(0, 100)),
        field<S, &S::dialogs>("dialog_ids", {}, children()), field<S, &S::menus>("menu_ids", {}, children()),
        field<S, &S::styles>("style_ids", {}, children()));
    return table;
}

void CoreState::settle(const WrittenFields&)
{
    for (QList<quint32>* guides : {&vertical_guides, &horizontal_guides}) {
        if (std::adjacent_find(guides->cbegin(), guides->cend(), std::greater_equal<>()) == guides->cend())
            continue;
        std::sort(guides->begin(), guides->end());
        guides->erase(std::unique(guides->begin(), guides->end()), guides->end());
    }
}

} // namespace tarn
