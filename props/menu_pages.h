#pragma once

#include "page_base/table_page.h"

namespace tarn {

/// The menus that the selected dialogs open.
const PageEntry& dialog_menu_page();
/// The menus that the selected controls open.
const PageEntry& control_menu_page();

} // namespace tarn
