#pragma once

#include <QString>

class CDXUTMenu;
class CDXUTMenuItem;
class CGuiCore;

// A menu's outline as it is edited. An item takes its submenu along.

namespace tarn {

enum class MenuPlace {
    Behind, ///< behind an item and its submenu, on its level; without an item behind all
    Inside  ///< at the end of the item's submenu
};

/// A new item; null when no ids are left, or the place would be too deep. `item` is one of the menu's, or null.
CDXUTMenuItem* add_menu_item(CGuiCore& core, CDXUTMenu& menu, const CDXUTMenuItem* item, MenuPlace place,
                             const QString& text, bool separator = false);

enum class MenuMove {
    Up,   ///< before the item above it on its level
    Down, ///< behind the item below it on its level
    In,   ///< to the end of the submenu of the item above it
    Out   ///< behind the item whose submenu it is in
};

bool can_move(const CDXUTMenuItem& item, MenuMove move);
/// Does nothing where it cannot be moved so.
void move_menu_item(CDXUTMenuItem& item, MenuMove move);

/// Where a dragged item comes to stand.
struct MenuSpot {
    int line;  ///< before this one of the menu's lines as they stand; one behind the last for the end
    int level; ///< of the item
};

/// Does nothing within the item itself, and where its submenu would be too deep.
void move_menu_item(CDXUTMenuItem& item, MenuSpot spot);

} // namespace tarn
