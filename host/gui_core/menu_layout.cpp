#include "menu_layout.h"

#include "dxut_menu.h"
#include "dxut_menu_item.h"
#include "gui_core.h"
#include "interface_font.h"
#include "style_look.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr double edge = 10;         ///< pixels between a row's sides and what stands in it
constexpr double shortcut_gap = 28; ///< pixels between texts and shortcuts
constexpr double arrow_width = 14;
constexpr double rounding = 1; ///< pixels by which a text may be wider than it is measured

struct Widths {
    double text = 0;
    double shortcut = 0;
    bool icons = false;
    bool arrows = false;
};

Widths measured(const CDXUTMenu& menu, const std::vector<int>& items)
{
    const QFontMetricsF metrics(font_of(menu.core().look(), menu.menu_state()));
    Widths widths;
    for (const int index : items) {
        const MenuItemState& item = menu.items()[index]->item_state();
        if (item.separator)
            continue;
        widths.text = std::max(widths.text, metrics.horizontalAdvance(item.text));
        widths.shortcut = std::max(widths.shortcut, metrics.horizontalAdvance(item.shortcut));
        widths.icons = widths.icons || item.checkable || !item.icon.isEmpty();
        widths.arrows = widths.arrows || menu.opens_submenu(index);
    }
    return widths;
}

/// The columns from left to right; answers the list's width.
double place_columns(MenuList& list, const Widths& widths, const MenuState& look)
{
    const double icons = widths.icons ? look.icon_width : 0;
    const double left = look.padding + (icons > 0 ? icons : edge);
    const double right = edge + look.padding;
    const double shortcut = widths.shortcut > 0 ? std::ceil(widths.shortcut) + rounding : 0;
    const double arrow = widths.arrows ? arrow_width : 0;
    const double behind = (shortcut > 0 ? shortcut_gap + shortcut : 0) + (arrow > 0 ? edge + arrow : 0);
    const double wanted = left + std::ceil(widths.text) + rounding + behind + right;
    const double width = std::clamp<double>(wanted, look.min_width, look.max_width);
    const double text = std::max(0.0, width - left - behind - right);
    list.icons = QRectF(look.padding, 0, icons, 0);
    list.texts = QRectF(left, 0, text, 0);
    list.arrows = QRectF(width - right - arrow, 0, arrow, 0);
    const double shortcut_right = list.arrows.left() - (arrow > 0 ? edge : 0);
    const double shortcut_left = std::max(left, shortcut_right - shortcut);
    list.shortcuts = QRectF(shortcut_left, 0, std::max(0.0, shortcut_right - shortcut_left), 0);
    return width;
}

/// The start of a length between 0 and `room`: at `wanted`, before `other` when there is no room behind it, or wherever
/// it fits.
double placed(double length, double wanted, double other, double room)
{
    if (wanted + length <= room)
        return wanted;
    return std::clamp(other - length, 0.0, std::max(0.0, room - length));
}

} // namespace

QFont font_of(const StyleLook& style, const MenuState& menu)
{
    const FontStyle usual = style.font_style(look_owner_menu);
    return interface_font(menu.font_size ? menu.font_size : style.font_size(look_owner_menu), menu.bold || usual.bold,
                          menu.font_family.isEmpty() ? style.family(look_owner_menu) : menu.font_family,
                          menu.font_italic || usual.italic);
}

int MenuList::row_at(QPointF place) const
{
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [place](const MenuRow& row) { return row.area.contains(place); });
    return found == rows.end() ? -1 : int(found - rows.begin());
}

MenuList menu_list(const CDXUTMenu& menu, int opener)
{
    const MenuState& look = menu.menu_state();
    const std::vector<int> items = menu.rows_of(opener);
    MenuList list{.opener = opener, .size = {}, .rows = {}, .icons = {}, .texts = {}, .shortcuts = {}, .arrows = {}};
    const double width = place_columns(list, measured(menu, items), look);
    double y = look.padding;
    for (const int index : items) {
        const double height = menu.items()[index]->item_state().separator ? look.separator_height : look.item_height;
        list.rows.push_back({.item = index,
                             .area = QRectF(look.padding, y, width - 2 * look.padding, height),
                             .opens_submenu = menu.opens_submenu(index)});
        y += height;
    }
    list.size = QSizeF(width, y + look.padding);
    return list;
}

QRectF placed_list(QSizeF list, QPointF corner, const QRectF& avoided, QSizeF screen)
{
    const double height = std::min(list.height(), screen.height());
    const double x = placed(list.width(), corner.x(), avoided.left(), screen.width());
    const double y = placed(height, corner.y(), avoided.bottom(), screen.height());
    return {std::max(0.0, x), std::max(0.0, y), list.width(), height};
}

} // namespace tarn
