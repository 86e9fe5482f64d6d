#include "menu_outline.h"

#include "core/document.h"
#include "dxut_menu.h"
#include "dxut_menu_item.h"
#include "gui_core.h"

#include <algorithm>
#include <optional>

namespace tarn {

namespace {

/// What a move does to the lines of an item and its submenu.
struct BlockMove {
    int first; ///< the block's lines: [first, end)
    int end;
    int target; ///< the line before which they come to stand
    int deeper; ///< levels
};

/// The item above on the same level; -1 when there is none.
int sibling_above(const CDXUTMenu& menu, int index)
{
    const std::vector<int> rows = menu.rows_of(menu.opener_of(index));
    const auto own = std::find(rows.begin(), rows.end(), index);
    return own == rows.begin() ? -1 : *(own - 1);
}

bool has_room(const CDXUTMenu& menu, const BlockMove& move)
{
    const auto& levels = menu.levels();
    return *std::max_element(levels.begin() + move.first, levels.begin() + move.end) + move.deeper
        <= MenuItemState::deepest_level;
}

std::optional<BlockMove> planned(const CDXUTMenuItem& item, MenuMove move)
{
    const CDXUTMenu* menu = item.menu();
    if (!menu)
        return {};
    const int first = menu->index_of(&item);
    const int end = menu->end_of(first);
    const int opener = menu->opener_of(first);
    const int above = sibling_above(*menu, first);
    switch (move) {
    case MenuMove::Up:
        if (above < 0)
            return {};
        return BlockMove{first, end, above, 0};
    case MenuMove::Down: {
        const int list_end = opener < 0 ? int(menu->items().size()) : menu->end_of(opener);
        if (end >= list_end)
            return {};
        return BlockMove{first, end, menu->end_of(end), 0};
    }
    case MenuMove::In: {
        const BlockMove in{first, end, first, 1};
        if (above < 0 || menu->items()[above]->item_state().separator || !has_room(*menu, in))
            return {};
        return in;
    }
    case MenuMove::Out:
        if (opener < 0)
            return {};
        return BlockMove{first, end, menu->end_of(opener), -1};
    }
    return {};
}

std::optional<BlockMove> planned(const CDXUTMenuItem& item, MenuSpot spot)
{
    const CDXUTMenu* menu = item.menu();
    if (!menu)
        return {};
    const int first = menu->index_of(&item);
    const int end = menu->end_of(first);
    const BlockMove plan{first, end, spot.line, spot.level - menu->levels()[std::size_t(first)]};
    const bool within_itself = spot.line > first && spot.line < end;
    if (within_itself || spot.line < 0 || spot.line > int(menu->items().size()) || !has_room(*menu, plan))
        return {};
    return plan;
}

void carry_out(CDXUTMenu& menu, const ObjectKind& kind, const BlockMove& plan)
{
    QList<CDXUTMenuItem*> order = menu.items();
    const std::vector<int> levels = menu.levels();
    for (int line = 0; line < int(order.size()); ++line) {
        const bool is_moved = line >= plan.first && line < plan.end;
        order[line]->set_level(levels[std::size_t(line)] + (is_moved ? plan.deeper : 0));
    }
    if (plan.target > plan.end)
        std::rotate(order.begin() + plan.first, order.begin() + plan.end, order.begin() + plan.target);
    else if (plan.target < plan.first)
        std::rotate(order.begin() + plan.target, order.begin() + plan.first, order.begin() + plan.end);
    IdList ids;
    for (const CDXUTMenuItem* line : order)
        ids.append(ObjectRef{line->id()});
    if (ids != menu.menu_state().items)
        menu.document().reorder(menu, kind, ids);
}

} // namespace

CDXUTMenuItem* add_menu_item(CGuiCore& core, CDXUTMenu& menu, const CDXUTMenuItem* item, MenuPlace place,
                             const QString& text, bool separator)
{
    const int index = menu.index_of(item);
    const int level = index < 0 ? 0 : menu.levels()[std::size_t(index)] + (place == MenuPlace::Inside ? 1 : 0);
    if (level > MenuItemState::deepest_level
        || (index >= 0 && place == MenuPlace::Inside && item->item_state().separator))
        return nullptr;
    const int line = index < 0 ? int(menu.items().size()) : menu.end_of(index);
    return core.create_menu_item(menu, line, {.text = text, .separator = separator, .level = level});
}

bool can_move(const CDXUTMenuItem& item, MenuMove move)
{
    return planned(item, move).has_value();
}

void move_menu_item(CDXUTMenuItem& item, MenuMove move)
{
    if (const auto plan = planned(item, move))
        carry_out(*item.menu(), *item.kind(), *plan);
}

void move_menu_item(CDXUTMenuItem& item, MenuSpot spot)
{
    if (const auto plan = planned(item, spot))
        carry_out(*item.menu(), *item.kind(), *plan);
}

} // namespace tarn
