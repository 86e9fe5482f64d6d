#pragma once

#include "core/model_object.h"
#include "draw_slot.h"
#include "menu_state.h"

class CDXUTMenu;
class CGuiCore;

/// A line of a menu.
class CDXUTMenuItem : public tarn::ModelObject {
public:
    CDXUTMenuItem(CGuiCore& core, tarn::StatePtr state);

    const tarn::MenuItemState& item_state() const { return state<tarn::MenuItemState>(); }
    /// Null while the item is part of no menu.
    CDXUTMenu* menu() const;
    bool set_text(const QString& text);
    bool set_function(const QString& function);
    bool set_checked(bool checked);
    bool set_level(int level);
    /// Whether the mouse and the keyboard can choose it.
    bool can_be_chosen() const { return item_state().enabled && !item_state().separator; }

    tarn::DrawSlot& draw_slot() const { return m_draw_slot; }
    tarn::ObjectState* fresh_state() const override { return new tarn::MenuItemState; }
    const char* class_name() const override { return "CDXUTMenuItem"; }
    void state_changed() override;

private:
    mutable tarn::DrawSlot m_draw_slot;
};
