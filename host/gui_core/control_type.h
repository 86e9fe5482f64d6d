#pragma once

/// The control types by their numbers; gaps are numbers that are not in use.
enum DXUT_CONTROL_TYPE : int {
    DXUT_CONTROL_BUTTON = 0,
    DXUT_CONTROL_STATIC = 1,
    DXUT_CONTROL_CHECKBOX = 2,
    DXUT_CONTROL_RADIOBUTTON = 3,
    DXUT_CONTROL_COMBOBOX = 4,
    DXUT_CONTROL_SLIDER = 5,
    DXUT_CONTROL_EDITBOX = 6,
    DXUT_CONTROL_LISTBOX = 8,
    DXUT_CONTROL_SCROLLBAR = 9,
    DXUT_CONTROL_BUTTONST = 10,
    DXUT_CONTROL_PICTURE = 11,
    DXUT_CONTROL_INFOBOX = 13,
    DXUT_CONTROL_FLASH = 16,
    DXUT_CONTROL_PROGRESS = 17,
    DXUT_CONTROL_PIP = 18,
    DXUT_CONTROL_MAP = 19,
};
constexpr int control_type_count = 20; ///< numbers are below this
