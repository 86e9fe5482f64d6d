#include "look_parts.h"

#include "control_class.h"
#include "control_style.h"
#include "core/language.h"
#include "skin_sheet.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tarn {

namespace {

template <std::size_t count>
using Elements = std::array<StyleElement, count>;

constexpr Elements<1> button{{{Element::Button, "Body", u"按钮体", u"Body"}}};
constexpr Elements<2> image_button{
    {{Element::Button, "Body", u"按钮体", u"Body", 0}, {Element::Bubble, "Bubble", u"注释气泡", u"Bubble"}}};
constexpr Elements<2> check_box{
    {{Element::CheckBox, "Box", u"方框", u"Box"}, {Element::CheckMark, "Mark", u"勾选标记", u"Mark"}}};
constexpr Elements<2> radio{
    {{Element::RadioButton, "Ring", u"圆环", u"Ring"}, {Element::RadioDot, "Dot", u"圆点", u"Dot"}}};
constexpr Elements<6> combo_box{{{Element::ComboBox, "Body", u"框体", u"Body"},
                                 {Element::DropArrow, "Arrow", u"箭头", u"Arrow"},
                                 {Element::InfoPanel, "DropDown", u"下拉框", u"Drop-down Field", 3},
                                 {Element::SelectedRow, "SelectedRow", u"选中行", u"Selected Row", 4},
                                 {Element::ScrollTrack, "ScrollTrack", u"滚动条轨道", u"Scroll Track", 5},
                                 {Element::ScrollThumb, "ScrollThumb", u"滚动条滑块", u"Scroll Thumb", 6}}};
constexpr Elements<2> slider{
    {{Element::SliderTrack, "Track", u"轨道", u"Track"}, {Element::SliderThumb, "Thumb", u"滑块", u"Thumb"}}};
constexpr Elements<1> edit_box{{{Element::Field, "Field", u"输入框", u"Field"}}};
constexpr Elements<4> list_box{{{Element::Field, "Field", u"列表框", u"Field", 7},
                                {Element::SelectedRow, "SelectedRow", u"选中行", u"Selected Row"},
                                {Element::ScrollTrack, "ScrollTrack", u"滚动条轨道", u"Scroll Track", 8},
                                {Element::ScrollThumb, "ScrollThumb", u"滚动条滑块", u"Scroll Thumb", 9}}};
constexpr Elements<2> scroll_bar{
    {{Element::ScrollTrack, "Track", u"轨道", u"Track"}, {Element::ScrollThumb, "Thumb", u"滑块", u"Thumb"}}};
constexpr Elements<1> panel{{{Element::InfoPanel, "Panel", u"面板", u"Panel"}}};
constexpr Elements<1> movie_panel{{{Element::InfoPanel, "Panel", u"面板", u"Panel", 10}}};
constexpr Elements<2> progress{
    {{Element::ProgressFrame, "Frame", u"外框", u"Frame"}, {Element::ProgressFill, "Filling", u"填充", u"Filling"}}};
constexpr Elements<1> frame{{{Element::Field, "Frame", u"边框", u"Frame", 11}}};
constexpr Elements<6> dialog{{{Element::Caption, "Caption", u"标题栏", u"Caption Bar"},
                              {Element::Frame, "Frame", u"窗体", u"Frame"},
                              {Element::InfoPanel, "Panel", u"无标题的窗体", u"Frame without Caption", 14},
                              {Element::CloseButton, "Close", u"关闭按钮", u"Close Button"},
                              {Element::MinimizeButton, "Minimize", u"最小化按钮", u"Minimise Button"},
                              {Element::RestoreButton, "Restore", u"还原按钮", u"Restore Button"}}};
constexpr Elements<5> menu{{{Element::Bubble, "Background", u"背景", u"Background", 1},
                            {Element::SelectedRow, "SelectedRow", u"选中行", u"Selected Row", 12},
                            {Element::CheckMark, "Mark", u"勾选标记", u"Mark", 2},
                            {Element::DropArrow, "Arrow", u"箭头", u"Arrow", 13},
                            {Element::White, "Separator", u"分隔线", u"Separator"}}};

template <std::size_t count>
using Colors = std::array<StyleColor, count>;

constexpr StyleColor text{"Text",
                          u"文字",
                          u"Text",
                          {"text", "text_strong", "text", "text_disabled", "text_strong"},
                          true};
constexpr StyleColor caption_text{"Text",
                                  u"标题文字",
                                  u"Caption Text",
                                  {"text", "text", "text", "text_disabled", "text"},
                                  true};
constexpr StyleColor dialog_line{"Border", u"边框线", u"Border Line", {"border"}};
constexpr StyleColor backdrop{"Backdrop", u"下拉框底色", u"Drop-down Ground", {"ground"}};

constexpr Colors<1> text_only{text};
constexpr Colors<2> combo_box_colors{text, backdrop};
constexpr Colors<4> edit_box_colors{text,
                                    {"Selection", u"选区", u"Selection", {"selection"}},
                                    {"Caret", u"光标", u"Caret", {"caret"}},
                                    {"Border", u"边框线", u"Border Line", {"accent"}}};
constexpr Colors<2> dialog_colors{caption_text, dialog_line};

const std::array owners{
    LookOwner{DXUT_CONTROL_BUTTON, "Button", nullptr, nullptr, button, text_only},
    LookOwner{DXUT_CONTROL_BUTTONST, "ImageButton", nullptr, nullptr, image_button, text_only},
    LookOwner{DXUT_CONTROL_CHECKBOX, "CheckBox", nullptr, nullptr, check_box, text_only},
    LookOwner{DXUT_CONTROL_RADIOBUTTON, "RadioButton", nullptr, nullptr, radio, text_only},
    LookOwner{DXUT_CONTROL_COMBOBOX, "ComboBox", nullptr, nullptr, combo_box, combo_box_colors},
    LookOwner{DXUT_CONTROL_LISTBOX, "ListBox", nullptr, nullptr, list_box, text_only},
    LookOwner{DXUT_CONTROL_SLIDER, "Slider", nullptr, nullptr, slider, {}},
    LookOwner{DXUT_CONTROL_SCROLLBAR, "ScrollBar", nullptr, nullptr, scroll_bar, {}},
    LookOwner{DXUT_CONTROL_EDITBOX, "EditBox", nullptr, nullptr, edit_box, edit_box_colors},
    LookOwner{DXUT_CONTROL_STATIC, "Static", nullptr, nullptr, {}, text_only},
    LookOwner{DXUT_CONTROL_PROGRESS, "Progress", nullptr, nullptr, progress, text_only},
    LookOwner{DXUT_CONTROL_PICTURE, "Picture", nullptr, nullptr, {}, text_only},
    LookOwner{DXUT_CONTROL_PIP, "PictureInPicture", nullptr, nullptr, frame, {}},
    LookOwner{DXUT_CONTROL_INFOBOX, "InfoBox", nullptr, nullptr, panel, text_only},
    LookOwner{DXUT_CONTROL_FLASH, "Flash", nullptr, nullptr, movie_panel, {}},
    LookOwner{look_owner_dialog, "Dialog", u"窗口", u"Dialog", dialog, dialog_colors},
    LookOwner{look_owner_menu, "Menu", u"菜单", u"Menu", menu, text_only},
};

constexpr std::array tokens{
    StyleToken{"text", u"普通文字", u"Plain Text", 0xffe8eef0},
    StyleToken{"text_strong", u"突出的文字", u"Strong Text", 0xffffffff},
    StyleToken{"text_disabled", u"禁用的文字", u"Disabled Text", 0xff7f8c93},
    StyleToken{"accent", u"强调色", u"Accent", 0xff6fd3e0},
    StyleToken{"selection", u"选区", u"Selection", 0xff2f7f8f},
    StyleToken{"caret", u"光标", u"Caret", 0xffbfeef5},
    StyleToken{"border", u"边框线", u"Border Line", 0x966fd3e0},
    StyleToken{"separator", u"分隔线", u"Separator", 0x38d6f2f7},
    StyleToken{"ground", u"底色", u"Ground", 0xff17252b},
};

QRect in_pixels(const QRect& units)
{
    return {units.topLeft() * atlas_pixels_per_unit, units.size() * atlas_pixels_per_unit};
}

} // namespace

QString StyleElement::caption() const
{
    return lang(chinese, english);
}

QString StyleColor::caption() const
{
    return lang(chinese, english);
}

QString LookOwner::caption() const
{
    return chinese ? lang(chinese, english) : GetControlTypeName(number);
}

QString StyleToken::caption() const
{
    return lang(chinese, english);
}

std::span<const LookOwner> look_owners()
{
    return owners;
}

const LookOwner* look_owner(int number)
{
    const auto found = std::find_if(owners.begin(), owners.end(),
                                    [number](const LookOwner& owner) { return owner.number == number; });
    return found == owners.end() ? nullptr : &*found;
}

int part_count(const LookOwner& owner)
{
    return int(owner.elements.size() + owner.colors.size());
}

const StyleElement* element_part(const LookOwner& owner, int part)
{
    return part >= 0 && part < int(owner.elements.size()) ? &owner.elements[std::size_t(part)] : nullptr;
}

const StyleColor* color_part(const LookOwner& owner, int part)
{
    const int place = part - int(owner.elements.size());
    return place >= 0 && place < int(owner.colors.size()) ? &owner.colors[std::size_t(place)] : nullptr;
}

QString part_caption(const LookOwner& owner, int part)
{
    if (const StyleElement* element = element_part(owner, part))
        return element->caption();
    const StyleColor* color = color_part(owner, part);
    return color ? color->caption() : QString();
}

bool part_has_states(const LookOwner& owner, int part)
{
    if (const StyleElement* element = element_part(owner, part))
        return has_states(element->element);
    const StyleColor* color = color_part(owner, part);
    return color && color->has_states;
}

bool is_text_part(const LookOwner& owner, int part)
{
    return !owner.colors.empty() && part == int(owner.elements.size());
}

QString part_name(const LookOwner& owner, int part, VisualState state)
{
    const StyleElement* element = element_part(owner, part);
    const StyleColor* color = color_part(owner, part);
    const char* name = element ? element->name : color ? color->name : "";
    return QLatin1String(owner.name) + QLatin1Char('.') + QLatin1String(name) + QLatin1Char('.') + state_name(state);
}

QRect default_rect(const LookOwner& owner, int part, VisualState state)
{
    const StyleElement* element = element_part(owner, part);
    if (!element)
        return {};
    return in_pixels(element->spare < 0 ? sheet_picture(element->element, state).rect
                                        : spare_cell(element->element, state, element->spare));
}

QMargins default_edges(const StyleElement& element)
{
    return sheet_picture(element.element, VisualState::Normal).edges * atlas_pixels_per_unit;
}

QImage with_own_cells(const QImage& sheet)
{
    QImage whole = sheet.convertToFormat(QImage::Format_ARGB32);
    for (const LookOwner& owner : owners)
        for (int part = 0; part < int(owner.elements.size()); ++part) {
            const StyleElement& element = owner.elements[std::size_t(part)];
            if (element.spare < 0)
                continue;
            for (int state = 0; state < (has_states(element.element) ? style_state_count : 1); ++state) {
                const QRect from = in_pixels(sheet_picture(element.element, VisualState(state)).rect);
                const QRect to = default_rect(owner, part, VisualState(state));
                if (!whole.rect().contains(from | to))
                    continue;
                for (int y = 0; y < from.height(); ++y)
                    std::memcpy(whole.scanLine(to.y() + y) + 4 * to.x(),
                                whole.constScanLine(from.y() + y) + 4 * from.x(), std::size_t(4 * from.width()));
            }
        }
    return whole;
}

std::span<const StyleToken> style_tokens()
{
    return tokens;
}

} // namespace tarn
