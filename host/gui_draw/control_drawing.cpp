#include "control_drawing.h"

#include "draw_functions.h"
#include "gui_core/dxut_button.h"
#include "gui_core/dxut_button_st.h"
#include "gui_core/dxut_combo_box.h"
#include "gui_core/dxut_edit_box.h"
#include "gui_core/dxut_info_box.h"
#include "gui_core/dxut_list_box.h"
#include "gui_core/dxut_media.h"
#include "gui_core/dxut_picture.h"
#include "gui_core/dxut_progress.h"
#include "gui_core/dxut_radio_button.h"
#include "gui_core/dxut_scroll_bar.h"
#include "gui_core/dxut_slider.h"

#include <array>

namespace tarn {

namespace {

using Draw = void (*)(DrawContext&, const CDXUTControl&, const QRectF&);

template <class Control, void (*draw)(DrawContext&, const Control&, const QRectF&)>
void draw_as(DrawContext& context, const CDXUTControl& control, const QRectF& area)
{
    draw(context, static_cast<const Control&>(control), area);
}

/// By control type; null for a number without a type.
constexpr auto table = [] {
    std::array<Draw, control_type_count> rows{};
    rows[DXUT_CONTROL_BUTTON] = draw_as<CDXUTButton, draw_button>;
    rows[DXUT_CONTROL_STATIC] = draw_as<CDXUTStatic, draw_static>;
    rows[DXUT_CONTROL_CHECKBOX] = draw_as<CDXUTCheckBox, draw_check_box>;
    rows[DXUT_CONTROL_RADIOBUTTON] = draw_as<CDXUTRadioButton, draw_radio_button>;
    rows[DXUT_CONTROL_COMBOBOX] = draw_as<CDXUTComboBox, draw_combo_box>;
    rows[DXUT_CONTROL_SLIDER] = draw_as<CDXUTSlider, draw_slider>;
    rows[DXUT_CONTROL_EDITBOX] = draw_as<CDXUTEditBox, draw_edit_box>;
    rows[DXUT_CONTROL_LISTBOX] = draw_as<CDXUTListBox, draw_list_box>;
    rows[DXUT_CONTROL_SCROLLBAR] = draw_as<CDXUTScrollBar, draw_scroll_bar>;
    rows[DXUT_CONTROL_BUTTONST] = draw_as<CDXUTButtonST, draw_image_button>;
    rows[DXUT_CONTROL_PICTURE] = draw_as<CDXUTPicture, draw_picture>;
    rows[DXUT_CONTROL_INFOBOX] = draw_as<CDXUTInfoBox, draw_info_box>;
    rows[DXUT_CONTROL_FLASH] = draw_as<CDXUTFlash, draw_flash>;
    rows[DXUT_CONTROL_PROGRESS] = draw_as<CDXUTProgress, draw_progress>;
    rows[DXUT_CONTROL_PIP] = draw_as<CDXUTPictureInPicture, draw_picture_in_picture>;
    rows[DXUT_CONTROL_MAP] = draw_as<CDXUTMap, draw_map>;
    return rows;
}();

} // namespace

void draw_control(DrawContext& context, const CDXUTControl& control, const QRectF& area)
{
    table[std::size_t(control.GetType())](context, control, area);
}

void draw_raised(DrawContext& context, const CDXUTControl& control)
{
    if (control.GetType() == DXUT_CONTROL_COMBOBOX)
        draw_combo_list(context, static_cast<const CDXUTComboBox&>(control));
    else if (control.GetType() == DXUT_CONTROL_BUTTONST)
        draw_annotation(context, static_cast<const CDXUTButtonST&>(control));
}

} // namespace tarn
