#include "dxut_menu.h"

#include "core/document.h"
#include "dxut_menu_item.h"
#include "gui_core.h"

#include <algorithm>

using tarn::MenuState;

CDXUTMenu::CDXUTMenu(CGuiCore& core, tarn::StatePtr state)
    : ModelObject(core.document(), std::move(state)), m_core(core)
{
}

bool CDXUTMenu::set_name(const QString& name)
{
    return change<&MenuState::name>(name);
}

void CDXUTMenu::find_items() const
{
    m_items_stale = false;
    m_items.clear();
    for (const tarn::ObjectRef id : menu_state().items)
        // While another content has the place of the one that this menu belongs to, its ids are those of others.
        if (tarn::ModelObject* item = document().find(id.id); item && item->parent() == this)
            m_items.append(static_cast<CDXUTMenuItem*>(item));
}

const std::vector<int>& CDXUTMenu::levels() const
{
    if (m_levels_stale) {
        m_levels_stale = false;
        m_levels.clear();
        int deepest = 0;
        for (const CDXUTMenuItem* item : items()) {
            m_levels.push_back(std::min(item->item_state().level, deepest));
            deepest = m_levels.back() + (item->item_state().separator ? 0 : 1);
        }
    }
    return m_levels;
}

int CDXUTMenu::opener_of(int index) const
{
    const int level = levels()[std::size_t(index)];
    while (--index >= 0 && levels()[std::size_t(index)] >= level) {}
    return index;
}

int CDXUTMenu::end_of(int index) const
{
    const auto first = levels().begin() + index;
    return int(std::find_if(first + 1, levels().end(), [first](int level) { return level <= *first; })
               - levels().begin());
}

std::vector<int> CDXUTMenu::rows_of(int opener) const
{
    std::vector<int> rows;
    const int end = opener < 0 ? int(items().size()) : end_of(opener);
    for (int row = opener + 1; row < end; row = end_of(row))
        rows.push_back(row);
    return rows;
}

void CDXUTMenu::children_changed()
{
    m_items_stale = m_levels_stale = true;
    m_core.structure_changed();
    m_core.menu_changed(*this);
}

void CDXUTMenu::state_changed()
{
    m_core.menu_changed(*this);
}
