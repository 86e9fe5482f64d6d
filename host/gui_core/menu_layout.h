#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <vector>

class QFont;
class CDXUTMenu;

namespace tarn {

struct MenuState;
class StyleLook;

/// One line of a list of items.
struct MenuRow {
    int item;    ///< index in the menu
    QRectF area; ///< pixels from the list's corner
    bool opens_submenu;
};

/// How the items that are shown together, the outermost ones or those of one submenu, stand in their list. Whoever draws,
/// hits or opens a menu asks here.
struct MenuList {
    int opener; ///< index of the item whose submenu it is; -1 for the outermost list
    QSizeF size;
    std::vector<MenuRow> rows;
    // Pixels from the list's left edge. A text of width 0 is not shown.
    QRectF icons;     ///< the column of icons and check marks; its height means nothing, likewise below
    QRectF texts;     ///< the items' texts
    QRectF shortcuts; ///< right-aligned
    QRectF arrows;    ///< of items that open a submenu

    /// The row at `place`, pixels from the list's corner; -1 for none.
    int row_at(QPointF place) const;
};

MenuList menu_list(const CDXUTMenu& menu, int opener);
QFont font_of(const StyleLook& style, const MenuState& menu);
/// Where a list of that size comes to stand on the screen: with its corner at `corner`, or on the other side of
/// `avoided`, which has the corner on its edge, where there is no room. It does not leave the screen; a list that is
/// higher than that is as high as the screen.
QRectF placed_list(QSizeF list, QPointF corner, const QRectF& avoided, QSizeF screen);

} // namespace tarn
