#include "gui_event.h"

#include "control_state.h"
#include "core/language.h"

#include <algorithm>
#include <array>

namespace tarn {

namespace {

constexpr quint32 type_bit(int type)
{
    return 1u << type;
}

constexpr quint32 of_dialogs = 0;
constexpr quint32 check_box = type_bit(DXUT_CONTROL_CHECKBOX);
constexpr quint32 radio_button = type_bit(DXUT_CONTROL_RADIOBUTTON);
constexpr quint32 buttons = type_bit(DXUT_CONTROL_BUTTON) | type_bit(DXUT_CONTROL_BUTTONST);
constexpr quint32 all_buttons = buttons | check_box | radio_button;
constexpr quint32 combo_box = type_bit(DXUT_CONTROL_COMBOBOX);
constexpr quint32 slider = type_bit(DXUT_CONTROL_SLIDER);
constexpr quint32 edit_box = type_bit(DXUT_CONTROL_EDITBOX);
constexpr quint32 list_box = type_bit(DXUT_CONTROL_LISTBOX);
constexpr quint32 scroll_bar = type_bit(DXUT_CONTROL_SCROLLBAR);
constexpr quint32 map = type_bit(DXUT_CONTROL_MAP);

// clang-format off
constexpr std::array table{
    EventKind{EVENT_BUTTON_CLICKED, "Click", u"鼠标点击", u"Click", buttons, {}},
    EventKind{EVENT_BUTTON_MOUSE_ENTERED, "MouseEnter", u"鼠标移入", u"Mouse In", all_buttons, {}},
    EventKind{EVENT_BUTTON_MOUSE_LEFT, "MouseLeave", u"鼠标移出", u"Mouse Out", all_buttons, {}},
    EventKind{EVENT_BUTTON_LEFT_DOWN, "LeftDown", u"鼠标左键按下", u"Left Down", buttons, {}},
    EventKind{EVENT_BUTTON_LEFT_UP, "LeftUp", u"鼠标左键弹起", u"Left Up", buttons, {}},
    EventKind{EVENT_COMBOBOX_SELECTION_CHANGED, "ComboSelectionChanged", u"选择改变", u"Selection Changed", combo_box, key<&ItemsState::selected>},
    EventKind{EVENT_RADIOBUTTON_CLICKED, "RadioClick", u"鼠标点击", u"Click", radio_button, key<&CheckBoxState::checked>},
    EventKind{EVENT_CHECKBOX_CLICKED, "CheckClick", u"鼠标点击", u"Click", check_box, key<&CheckBoxState::checked>},
    EventKind{EVENT_SLIDER_DRAGGED, "SliderDrag", u"用户拖动", u"Dragged", slider, key<&SliderState::value>},
    EventKind{EVENT_EDITBOX_ENTER, "EditEnter", u"回车按下", u"Enter Pressed", edit_box, key<&StaticState::text>},
    EventKind{EVENT_LISTBOX_DOUBLE_CLICKED, "ListDoubleClick", u"鼠标双击", u"Double Click", list_box, key<&ItemsState::selected>},
    EventKind{EVENT_LISTBOX_CLICKED, "ListClick", u"鼠标点击", u"Click", list_box, key<&ItemsState::selected>},
    EventKind{EVENT_CHECKBOX_CHECKED, "CheckOn", u"按钮被选中", u"Checked", check_box, key<&CheckBoxState::checked>},
    EventKind{EVENT_CHECKBOX_UNCHECKED, "CheckOff", u"按钮被取消", u"Unchecked", check_box, key<&CheckBoxState::checked>},
    EventKind{EVENT_RADIOBUTTON_CHECKED, "RadioOn", u"按钮被选中", u"Checked", radio_button, key<&CheckBoxState::checked>},
    EventKind{EVENT_RADIOBUTTON_UNCHECKED, "RadioOff", u"按钮被取消", u"Unchecked", radio_button, key<&CheckBoxState::checked>},
    EventKind{EVENT_SCROLLBAR_CHANGED, "ScrollChanged", u"滑杆值变化", u"Value Changed", scroll_bar, key<&ScrollBarState::position>},
    EventKind{EVENT_DIALOG_MINIMIZED, "Minimize", u"最小化窗口", u"Minimized", of_dialogs, {}},
    EventKind{EVENT_DIALOG_RESTORED, "Restore", u"窗口还原", u"Restored", of_dialogs, {}},
    EventKind{EVENT_DIALOG_CLOSED, "Close", u"窗口关闭", u"Closed", of_dialogs, {}},
    EventKind{EVENT_DIALOG_MOVED, "Move", u"窗口移动", u"Moved", of_dialogs, {}},
    EventKind{EVENT_MAP_HOT_SPOT_SHOWN, "MapSpotShown", u"导航图热点出现", u"Hot Spot Shown", map, {}},
    EventKind{EVENT_MAP_HOT_SPOT_HIDDEN, "MapSpotHidden", u"导航图热点消失", u"Hot Spot Hidden", map, {}},
    EventKind{EVENT_MAP_HINT_CLICKED, "MapHintClick", u"导航图物体提示点击", u"Object Hint Clicked", map, {}},
};
// clang-format on

} // namespace

std::span<const EventKind> event_kinds()
{
    return table;
}

const EventKind* event_kind(quint32 type)
{
    const auto found = std::find_if(table.begin(), table.end(),
                                    [type](const EventKind& row) { return row.type == type; });
    return found == table.end() ? nullptr : &*found;
}

QString event_caption(quint32 type)
{
    const EventKind* kind = event_kind(type);
    return kind ? lang(kind->chinese, kind->english) : QStringLiteral("0x%1").arg(type, 0, 16);
}

} // namespace tarn

QString GetEventStrName(quint32 type)
{
    const tarn::EventKind* kind = tarn::event_kind(type);
    return kind ? QLatin1String(kind->name) : QString();
}
