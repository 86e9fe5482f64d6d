#include "menu_state.h"

#include "core/field.h"

namespace tarn {

namespace {

constexpr int longest_text = 255; ///< UTF-16 units of a name or an item
constexpr double widest = 10000;  ///< pixels

} // namespace

const FieldTable& MenuState::field_table()
{
    using S = MenuState;
    static const FieldTable table(
        nullptr, field<S, &S::id>("id", quint32(0), read_only()),
        field<S, &S::name>("name", QString(), max_length(longest_text)),
        field<S, &S::item_height>("item_height", 28, range(8, 500)),
        field<S, &S::separator_height>("separator_height", 9, range(1, 500)),
        field<S, &S::min_width>("min_width", 160, range(20, widest)),
        field<S, &S::max_width>("max_width", 480, range(20, widest)),
        field<S, &S::icon_width>("icon_width", 28, range(0, 500)), field<S, &S::padding>("padding", 5, range(0, 100)),
        field<S, &S::style_images>("style_images", {}, picture_name()), field<S, &S::style_colors>("style_colors"),
        field<S, &S::style_text_colors>("style_text_colors"),
        field<S, &S::font_family>("font_family", QString(), max_length(100)),
        field<S, &S::font_size>("font_size", 0, range(0, 500)), field<S, &S::bold>("bold", false),
        field<S, &S::font_italic>("font_italic", false), field<S, &S::items>("item_ids", {}, children()));
    return table;
}

void MenuState::settle(const WrittenFields& written)
{
    if (min_width <= max_width)
        return;
    const bool min_moved = written.contains(key<&MenuState::min_width>);
    (min_moved ? max_width : min_width) = min_moved ? min_width : max_width;
}

const FieldTable& MenuItemState::field_table()
{
    using S = MenuItemState;
    static const FieldTable table(nullptr, field<S, &S::id>("id", quint32(0), read_only()),
                                  field<S, &S::parent>("menu", ObjectRef{}, read_only()),
                                  field<S, &S::text>("text", QString(), max_length(longest_text)),
                                  field<S, &S::shortcut>("shortcut", QString(), max_length(longest_text)),
                                  field<S, &S::icon>("icon", QString(), picture_name()),
                                  field<S, &S::function>("function_name", {}, {.max_length = 300, .function = true}),
                                  field<S, &S::enabled>("enabled", true), field<S, &S::checkable>("checkable", false),
                                  field<S, &S::checked>("checked", false), field<S, &S::separator>("separator", false),
                                  field<S, &S::level>("level", 0, range(0, deepest_level)));
    return table;
}

/// A separator cannot be chosen, and what cannot be checked is not.
void MenuItemState::settle(const WrittenFields&)
{
    checkable = checkable && !separator;
    checked = checked && checkable;
}

} // namespace tarn
