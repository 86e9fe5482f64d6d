#include "control_class.h"

#include "core/language.h"
#include "dxut_button.h"
#include "dxut_button_st.h"
#include "dxut_combo_box.h"
#include "dxut_edit_box.h"
#include "dxut_info_box.h"
#include "dxut_list_box.h"
#include "dxut_media.h"
#include "dxut_picture.h"
#include "dxut_progress.h"
#include "dxut_radio_button.h"
#include "dxut_scroll_bar.h"
#include "dxut_slider.h"

#include <array>
#include <utility>

namespace tarn {

namespace {

template <class Control>
std::shared_ptr<CDXUTControl> make(CGuiCore& core, StatePtr state)
{
    return std::allocate_shared<Control>(std::pmr::polymorphic_allocator<>(&object_pool()), core, std::move(state));
}

template <class State>
ObjectState* fresh()
{
    return new State;
}

// One type a line.
// clang-format off
constexpr std::array table{
    ControlClass{DXUT_CONTROL_BUTTON, "CDXUTButton", u"普通按钮", u"Button", "Button", {96, 28}, 6146, 6328, make<CDXUTButton>, fresh<ButtonState>},
    ControlClass{DXUT_CONTROL_STATIC, "CDXUTStatic", u"静态文本", u"Static Text", "Static", {120, 24}, 6023, 6344, make<CDXUTStatic>, fresh<StaticState>},
    ControlClass{DXUT_CONTROL_CHECKBOX, "CDXUTCheckBox", u"复选框", u"Check Box", "Check", {120, 24}, 6149, 6330, make<CDXUTCheckBox>, fresh<CheckBoxState>},
    ControlClass{DXUT_CONTROL_RADIOBUTTON, "CDXUTRadioButton", u"单选框", u"Radio Button", "Radio", {120, 24}, 6327, 6332, make<CDXUTRadioButton>, fresh<RadioButtonState>},
    ControlClass{DXUT_CONTROL_COMBOBOX, "CDXUTComboBox", u"组合下拉框", u"Combo Box", "Combo", {140, 28}, 6331, 6336, make<CDXUTComboBox>, fresh<ComboBoxState>},
    ControlClass{DXUT_CONTROL_SLIDER, "CDXUTSlider", u"滑杆", u"Slider", "Slider", {160, 24}, 6022, 6342, make<CDXUTSlider>, fresh<SliderState>},
    ControlClass{DXUT_CONTROL_EDITBOX, "CDXUTEditBox", u"输入框", u"Edit Box", "Edit", {140, 28}, 6329, 6334, make<CDXUTEditBox>, fresh<EditBoxState>},
    ControlClass{DXUT_CONTROL_LISTBOX, "CDXUTListBox", u"列表框", u"List Box", "List", {160, 140}, 6024, 6348, make<CDXUTListBox>, fresh<ListBoxState>},
    ControlClass{DXUT_CONTROL_SCROLLBAR, "CDXUTScrollBar", u"滚动条", u"Scroll Bar", "Scroll", {20, 140}, 6025, 6346, make<CDXUTScrollBar>, fresh<ScrollBarState>},
    ControlClass{DXUT_CONTROL_BUTTONST, "CDXUTButtonST", u"图片按钮", u"Image Button", "ImageButton", {96, 96}, 6351, 6367, make<CDXUTButtonST>, fresh<ImageButtonState>},
    ControlClass{DXUT_CONTROL_PICTURE, "CDXUTPicture", u"静态图片", u"Picture", "Picture", {128, 128}, 6029, 6361, make<CDXUTPicture>, fresh<PictureState>},
    ControlClass{DXUT_CONTROL_INFOBOX, "CDXUTInfoBox", u"信息显示框", u"Info Box", "Info", {240, 140}, 6032, 6354, make<CDXUTInfoBox>, fresh<InfoBoxState>},
    ControlClass{DXUT_CONTROL_FLASH, "CDXUTFlash", u"FLASH", u"Flash", "Flash", {240, 180}, 6357, 6117, make<CDXUTFlash>, fresh<FlashState>},
    ControlClass{DXUT_CONTROL_PROGRESS, "CDXUTProgress", u"进度条", u"Progress Bar", "Progress", {180, 24}, 6079, 6118, make<CDXUTProgress>, fresh<ProgressState>},
    ControlClass{DXUT_CONTROL_PIP, "CDXUTPictureInPicture", u"画中画", u"Picture in Picture", "View", {240, 160}, 6219, 6608, make<CDXUTPictureInPicture>, fresh<PictureInPictureState>},
    ControlClass{DXUT_CONTROL_MAP, "CDXUTMap", u"导航图", u"Map", "Map", {180, 180}, 6218, 6610, make<CDXUTMap>, fresh<MapState>},
};
// clang-format on

} // namespace

std::span<const ControlClass> control_classes()
{
    return table;
}

const ControlClass* control_class(int type)
{
    for (const ControlClass& row : table)
        if (row.type == type)
            return &row;
    return nullptr;
}

ObjectState* make_control_state(int type)
{
    const ControlClass* row = control_class(type);
    return row ? row->make_state() : nullptr;
}

} // namespace tarn

QString GetControlTypeName(int type)
{
    const tarn::ControlClass* row = tarn::control_class(type);
    return row ? tarn::lang(row->chinese, row->english) : QString();
}
