#include "control_style.h"

#include "control_state.h"
#include "core/language.h"
#include "interface_font.h"

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

constexpr Elements<1> button{{{Element::Button, u"按钮体", u"Body"}}};
constexpr Elements<2> image_button{{{Element::Button, u"按钮体", u"Body"}, {Element::Bubble, u"注释气泡", u"Bubble"}}};
constexpr Elements<2> check_box{{{Element::CheckBox, u"方框", u"Box"}, {Element::CheckMark, u"勾选标记", u"Mark"}}};
constexpr Elements<2> radio{{{Element::RadioButton, u"圆环", u"Ring"}, {Element::RadioDot, u"圆点", u"Dot"}}};
constexpr Elements<6> combo_box{{{Element::ComboBox, u"框体", u"Body"},
                                 {Element::DropArrow, u"箭头", u"Arrow"},
                                 {Element::InfoPanel, u"下拉框", u"Drop-down Field"},
                                 {Element::SelectedRow, u"选中行", u"Selected Row"},
                                 {Element::ScrollTrack, u"滚动条轨道", u"Scroll Track"},
                                 {Element::ScrollThumb, u"滚动条滑块", u"Scroll Thumb"}}};
constexpr Elements<2> slider{{{Element::SliderTrack, u"轨道", u"Track"}, {Element::SliderThumb, u"滑块", u"Thumb"}}};
constexpr Elements<1> edit_box{{{Element::Field, u"输入框", u"Field"}}};
constexpr Elements<4> list_box{{{Element::Field, u"列表框", u"Field"},
                                {Element::SelectedRow, u"选中行", u"Selected Row"},
                                {Element::ScrollTrack, u"滚动条轨道", u"Scroll Track"},
                                {Element::ScrollThumb, u"滚动条滑块", u"Scroll Thumb"}}};
constexpr Elements<2> scroll_bar{
    {{Element::ScrollTrack, u"轨道", u"Track"}, {Element::ScrollThumb, u"滑块", u"Thumb"}}};
constexpr Elements<1> panel{{{Element::InfoPanel, u"面板", u"Panel"}}};
constexpr Elements<2> progress{
    {{Element::ProgressFrame, u"外框", u"Frame"}, {Element::ProgressFill, u"填充", u"Filling"}}};
constexpr Elements<1> frame{{{Element::Field, u"边框", u"Frame"}}};

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

} // namespace

QString StyleElement::name() const
{
    return lang(chinese, english);
}

std::span<const StyleElement> style_elements(int control_type)
{
    const TypeStyle* style = style_of(control_type);
    return style ? style->elements : std::span<const StyleElement>();
}

bool has_styled_text(int control_type)
{
    const TypeStyle* style = style_of(control_type);
    return style && style->has_text;
}

QString visual_state_name(VisualState state)
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

int style_element_index(int control_type, Element element)
{
    const auto all = style_elements(control_type);
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const StyleElement& e) { return e.element == element; });
    return found == all.end() ? -1 : int(found - all.begin());
}

QFont font_of(const StaticState& state)
{
    return interface_font(state.font_size ? state.font_size : default_font_size, state.bold, state.extras->font_family,
                          state.extras->font_italic);
}

} // namespace tarn
