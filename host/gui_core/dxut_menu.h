#pragma once

#include "core/model_object.h"
#include "menu_state.h"

#include <QList>

#include <vector>

class CDXUTMenuItem;
class CGuiCore;

/// A menu of the interface: an outline of items that is opened by a right click, a button or a script.
class CDXUTMenu : public tarn::ModelObject {
public:
    CDXUTMenu(CGuiCore& core, tarn::StatePtr state);

    CGuiCore& core() const { return m_core; }
    const QString& name() const { return menu_state().name; }
    const tarn::MenuState& menu_state() const { return state<tarn::MenuState>(); }

    /// From top to bottom, those of submenus behind the item that opens them.
    const QList<CDXUTMenuItem*>& items() const
    {
        if (m_items_stale)
            find_items();
        return m_items;
    }
    int index_of(const CDXUTMenuItem* item) const { return int(items().indexOf(item)); } ///< -1 when it is none of them
    /// How deep each item lies: its own level, or what is possible behind the items before it.
    const std::vector<int>& levels() const;
    /// The item that opens the submenu in which item `index` is; -1 when it is in none.
    int opener_of(int index) const;
    /// Where the submenu of item `index` ends; index + 1 when it has none.
    int end_of(int index) const;
    /// The items of the submenu that item `opener` opens; with -1 the outermost ones.
    std::vector<int> rows_of(int opener) const;
    bool opens_submenu(int index) const { return end_of(index) > index + 1; }

    tarn::ObjectState* fresh_state() const override { return new tarn::MenuState; }
    const char* class_name() const override { return "CDXUTMenu"; }
    void state_changed() override;
    void children_changed() override;

private:
    friend class CDXUTMenuItem;
    void find_items() const;

    CGuiCore& m_core;
    // Worked out from the states, and found anew after these changed.
    mutable QList<CDXUTMenuItem*> m_items;
    mutable std::vector<int> m_levels;
    mutable bool m_items_stale = false;
    mutable bool m_levels_stale = false;
};
