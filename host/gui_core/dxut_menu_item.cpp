#include "dxut_menu_item.h"

#include "dxut_menu.h"
#include "gui_core.h"

using tarn::MenuItemState;

CDXUTMenuItem::CDXUTMenuItem(CGuiCore& core, tarn::StatePtr state) : ModelObject(core.document(), std::move(state)) {}

CDXUTMenu* CDXUTMenuItem::menu() const
{
    return static_cast<CDXUTMenu*>(parent());
}

bool CDXUTMenuItem::set_text(const QString& text)
{
    return change<&MenuItemState::text>(text);
}

bool CDXUTMenuItem::set_function(const QString& function)
{
    return change<&MenuItemState::function>(function);
}

bool CDXUTMenuItem::set_checked(bool checked)
{
    return change<&MenuItemState::checked>(checked);
}

bool CDXUTMenuItem::set_level(int level)
{
    return change<&MenuItemState::level>(level);
}

void CDXUTMenuItem::state_changed()
{
    if (CDXUTMenu* owner = menu()) {
        owner->m_items_stale = owner->m_levels_stale = true;
        owner->state_changed();
    }
}
