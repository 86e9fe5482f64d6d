#include "menu_pages.h"

#include "gui_core/control_state.h"
#include "gui_core/dialog_state.h"

namespace tarn {

namespace {

constexpr BoundMenuRow dialog_menus[] = {{6871, 6872, key<&DialogState::right_click_menu>}};
constexpr BoundMenuRow control_menus[] = {{6871, 6872, key<&ControlExtras::right_click_menu>},
                                          {6873, 6874, key<&ControlExtras::click_menu>}};

constexpr PageEntry of_dialogs{.class_name = "CChildDialogMenu",
                               .template_id = 6870,
                               .target = &selected_dialogs,
                               .menus = dialog_menus};
constexpr PageEntry of_controls{.class_name = "CChildCtrlMenu",
                                .template_id = 6875,
                                .target = &selected_controls,
                                .menus = control_menus};

} // namespace

const PageEntry& dialog_menu_page()
{
    return of_dialogs;
}

const PageEntry& control_menu_page()
{
    return of_controls;
}

} // namespace tarn
