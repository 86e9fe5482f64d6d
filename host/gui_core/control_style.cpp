#include "control_style.h"

#include "control_state.h"
#include "core/language.h"
#include "interface_font.h"
#include "menu_state.h"

#include <QFont>

#include <algorithm>
#include <array>

namespace tarn {

namespace {

struct TypeStyle {
    int type;
    bool has_text;
    std::span<const StyleElement> elements;
};

template <std::size_t count>
using Elements = std::array<StyleElement, count>;

constexpr Elements<1> button{{{Element::Button, "Body", u"按钮体", u"Body"}}};
constexpr Elements<2> image_button{
    {{Element::Button, "Body", u"按钮体", u"Body"}, {Element::Bubble, "Bubble", u"注释气泡", u"Bubble"}}};
constexpr Elements<2> check_box{
    {{Element::CheckBox, "Box", u"方框", u"Box"}, {Element::CheckMark, "Mark", u"勾选标记", u"Mark"}}};
constexpr Elements<2> radio{
    {{Element::RadioButton, "Ring", u"圆环", u"Ring"}, {Element::RadioDot, "Dot", u"圆点", u"Dot"}}};
constexpr Elements<6> combo_box{{{Element::ComboBox, "Body", u"框体", u"Body"},
                                 {Element::DropArrow, "Arrow", u"箭头", u"Arrow"},
                                 {Element::InfoPanel, "DropDown", u"下拉框", u"Drop-down Field"},
                                 {Element::SelectedRow, "SelectedRow", u"选中行", u"Selected Row"},
                                 {Element::ScrollTrack, "ScrollTrack", u"滚动条轨道", u"Scroll Track"},
                                 {Element::ScrollThumb, "ScrollThumb", u"滚动条滑块", u"Scroll Thumb"}}};
constexpr Elements<2> slider{
    {{Element::SliderTrack, "Track", u"轨道", u"Track"}, {Element::SliderThumb, "Thumb", u"滑块", u"Thumb"}}};
constexpr Elements<1> edit_box{{{Element::Field, "Field", u"输入框", u"Field"}}};
constexpr Elements<4> list_box{{{Element::Field, "Field", u"列表框", u"Field"},
                                {Element::SelectedRow, "SelectedRow", u"选中行", u"Selected Row"},
                                {Element::ScrollTrack, "ScrollTrack", u"滚动条轨道", u"Scroll Track"},
                                {Element::ScrollThumb, "ScrollThumb", u"滚动条滑块", u"Scroll Thumb"}}};
constexpr Elements<2> scroll_bar{
    {{Element::ScrollTrack, "Track", u"轨道", u"Track"}, {Element::ScrollThumb, "Thumb", u"滑块", u"Thumb"}}};
constexpr Elements<1> panel{{{Element::InfoPanel, "Panel", u"面板", u"Panel"}}};
constexpr Elements<2> progress{
    {{Element::ProgressFrame, "Frame", u"外框", u"Frame"}, {Element::ProgressFill, "Filling", u"填充", u"Filling"}}};
constexpr Elements<1> frame{{{Element::Field, "Frame", u"边框", u"Frame"}}};

constexpr Elements<5> menu_parts{{{Element::Bubble, "Background", u"背景", u"Background"},
                                  {Element::SelectedRow, "SelectedRow", u"选中行", u"Selected Row"},
                                  {Element::CheckMark, "Mark", u"勾选标记", u"Mark"},
                                  {Element::DropArrow, "Arrow", u"箭头", u"Arrow"},
                                  {Element::White, "Separator", u"分隔线", u"Separator"}}};

// The pictures that a picture and a map are made of are attributes of theirs.
const std::array table{
    TypeStyle{DXUT_CONTROL_BUTTON, true, button},
    TypeStyle{DXUT_CONTROL_STATIC, true, {}},
    TypeStyle{DXUT_CONTROL_CHECKBOX, true, check_box},
    TypeStyle{DXUT_CONTROL_RADIOBUTTON, true, radio},
    TypeStyle{DXUT_CONTROL_COMBOBOX, true, combo_box},
    TypeStyle{DXUT_CONTROL_SLIDER, false, slider},
    TypeStyle{DXUT_CONTROL_EDITBOX, true, edit_box},
    TypeStyle{DXUT_CONTROL_LISTBOX, true, list_box},
    TypeStyle{DXUT_CONTROL_SCROLLBAR, false, scroll_bar},
    TypeStyle{DXUT_CONTROL_BUTTONST, true, image_button},
    TypeStyle{DXUT_CONTROL_PICTURE, true, {}},
    TypeStyle{DXUT_CONTROL_INFOBOX, true, panel},
    TypeStyle{DXUT_CONTROL_FLASH, false, panel},
    TypeStyle{DXUT_CONTROL_PROGRESS, true, progress},
    TypeStyle{DXUT_CONTROL_PIP, false, frame},
};

const TypeStyle* style_of(int control_type)
{
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&](const TypeStyle& row) { return row.type == control_type; });
    return found == table.end() ? nullptr : &*found;
}

/// What one level of choices says.
struct LookLevel {
    const TextMap& images;
    const QMap<QString, quint32>& colors;
    const QMap<QString, quint32>& text_colors;
};

/// The nearest first. What none of them says is the default skin's.
using LookLevels = std::array<LookLevel, 1>;
LookLevels look_levels(const ControlState& control)
{
    const ControlExtras& own = control.extras.get();
    return {{{own.style_images, own.style_colors, own.style_text_colors}}};
}
LookLevels look_levels(const MenuState& menu)
{
    return {{{menu.style_images, menu.style_colors, menu.style_text_colors}}};
}

ElementLook resolved(std::span<const StyleElement> elements, const LookLevels& levels, Element element,
                     VisualState state)
{
    const auto part = std::find_if(elements.begin(), elements.end(),
                                   [&](const StyleElement& e) { return e.element == element; });
    if (part == elements.end() || state == VisualState::Hidden)
        return {};
    ElementLook look;
    for (const LookLevel& level : levels) {
        if (level.images.isEmpty() && level.colors.isEmpty())
            continue;
        const QString name = look_name(*part, state);
        const QString usual = look_name(*part, VisualState::Normal);
        const bool has_own = level.images.contains(name);
        const bool served = !has_own && level.images.contains(usual);
        if (look.color == 0)
            look.color = level.colors.value(name);
        if (look.color == 0 && served)
            look.color = level.colors.value(usual);
        if (has_own || served) {
            look.picture = level.images.value(has_own ? name : usual);
            look.served = served && state != VisualState::Normal;
            break; // A colour farther away is meant for the picture there.
        }
    }
    return look;
}

quint32 resolved_text_color(const LookLevels& levels, VisualState state)
{
    for (const LookLevel& level : levels)
        if (const quint32 chosen = level.text_colors.value(state_name(state)))
            return chosen;
    return 0;
}

} // namespace

QString StyleElement::caption() const
{
    return lang(chinese, english);
}

std::span<const StyleElement> style_elements(int control_type)
{
    const TypeStyle* style = style_of(control_type);
    return style ? style->elements : std::span<const StyleElement>();
}

std::span<const StyleElement> menu_elements()
{
    return menu_parts;
}

bool has_styled_text(int control_type)
{
    const TypeStyle* style = style_of(control_type);
    return style && style->has_text;
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

ElementLook element_look(const ControlState& control, Element element, VisualState state)
{
    return resolved(style_elements(control.type), look_levels(control), element, state);
}

ElementLook element_look(const MenuState& menu, Element element, VisualState state)
{
    return resolved(menu_elements(), look_levels(menu), element, state);
}

quint32 chosen_text_color(const ControlState& control, VisualState state)
{
    return resolved_text_color(look_levels(control), state);
}

quint32 chosen_text_color(const MenuState& menu, VisualState state)
{
    return resolved_text_color(look_levels(menu), state);
}

QFont font_of(const StaticState& state)
{
    return interface_font(state.font_size ? state.font_size : default_font_size, state.bold, state.extras->font_family,
                          state.extras->font_italic);
}

} // namespace tarn
