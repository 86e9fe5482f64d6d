#include "control_style.h"

#include "control_state.h"
#include "core/language.h"
#include "interface_font.h"
#include "menu_state.h"
#include "style_look.h"

#include <QFont>

#include <algorithm>
#include <array>

namespace tarn {

namespace {

/// What the author chose at an object itself.
struct OwnChoices {
    const TextMap& images;
    const QMap<QString, quint32>& colors;
};

OwnChoices own_choices(const ControlState& control)
{
    const ControlExtras& own = control.extras.get();
    return {own.style_images, own.style_colors};
}
OwnChoices own_choices(const MenuState& menu)
{
    return {menu.style_images, menu.style_colors};
}

ElementLook resolved(const StyleLook& style, int owner, const OwnChoices& own, Element element, VisualState state,
                     VisualState part_state)
{
    const ElementLook styled = style_element_look(style, owner, element, part_state);
    if (own.images.isEmpty() && own.colors.isEmpty())
        return styled;
    const auto elements = style_elements(owner);
    const auto part = std::find_if(elements.begin(), elements.end(),
                                   [&](const StyleElement& e) { return e.element == element; });
    if (part == elements.end() || state == VisualState::Hidden)
        return styled;
    const QString name = look_name(*part, state);
    const QString usual = look_name(*part, VisualState::Normal);
    const bool has_own = own.images.contains(name);
    const bool served = !has_own && own.images.contains(usual);
    quint32 color = own.colors.value(name);
    if (color == 0 && served)
        color = own.colors.value(usual);
    // The style's colour is meant for its own picture.
    if (has_own || served)
        return {.picture = own.images.value(has_own ? name : usual),
                .color = color,
                .served = served && state != VisualState::Normal};
    ElementLook look = styled;
    if (color)
        look.color = color;
    return look;
}

} // namespace

std::span<const StyleElement> style_elements(int owner)
{
    const LookOwner* row = look_owner(owner);
    return row ? row->elements : std::span<const StyleElement>();
}

bool has_styled_text(int control_type)
{
    const LookOwner* row = look_owner(control_type);
    return row && !row->colors.empty();
}

QString visual_state_caption(VisualState state)
{
    switch (state) {
    case VisualState::Normal: return lang(u"正常", u"Normal");
    case VisualState::Hover: return lang(u"鼠标悬停", u"Hover");
    case VisualState::Pressed: return lang(u"按下", u"Pressed");
    case VisualState::Disabled: return lang(u"禁用", u"Disabled");
    case VisualState::Focused: return lang(u"焦点", u"Focused");
    case VisualState::Hidden: return lang(u"隐藏", u"Hidden");
    }
    return {};
}

QString state_name(VisualState state)
{
    static const std::array names{QStringLiteral("normal"), QStringLiteral("hover"), QStringLiteral("pressed"),
                                  QStringLiteral("disabled"), QStringLiteral("focused")};
    static_assert(names.size() == style_state_count);
    return state == VisualState::Hidden ? QString() : names[std::size_t(state)];
}

QString look_name(const StyleElement& element, VisualState state)
{
    return QLatin1String(element.name) + QLatin1Char('.') + state_name(state);
}

ElementLook style_element_look(const StyleLook& style, int owner, Element element, VisualState state)
{
    const StyledElement& look = style.element(owner, element, state);
    return {.picture = {}, .color = look.color, .region = look.region, .edges = look.edges, .shades = look.shades};
}

ElementLook element_look(const StyleLook& style, const ControlState& control, Element element, VisualState state,
                         VisualState part)
{
    return resolved(style, control.type, own_choices(control), element, state, part);
}

ElementLook element_look(const StyleLook& style, const MenuState& menu, Element element, VisualState state)
{
    return resolved(style, look_owner_menu, own_choices(menu), element, state, state);
}

quint32 chosen_text_color(const ControlState& control, VisualState state)
{
    const auto& chosen = control.extras->style_text_colors;
    return chosen.isEmpty() ? 0 : chosen.value(state_name(state));
}

quint32 chosen_text_color(const MenuState& menu, VisualState state)
{
    return menu.style_text_colors.value(state_name(state));
}

QFont font_of(const StyleLook& style, const StaticState& state)
{
    const QString& family = state.extras->font_family;
    const FontStyle usual = style.font_style(state.type);
    return interface_font(state.font_size ? state.font_size : style.font_size(state.type), state.bold || usual.bold,
                          family.isEmpty() ? style.family(state.type) : family,
                          state.extras->font_italic || usual.italic);
}

} // namespace tarn
