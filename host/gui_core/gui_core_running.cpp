// The interface while it runs: which dialog is active, what has the keyboard, where minimised dialogs are.

#include "dxut_control.h"
#include "dxut_dialog.h"
#include "dxut_menu.h"
#include "dxut_menu_item.h"
#include "gui_core.h"
#include "open_menu.h"
#include "transitions.h"

#include <QGuiApplication>
#include <QStyleHints>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double widest_bar = 200; ///< pixels of a dialog that is minimised to the bottom

bool is_bar(const CDXUTDialog& dialog)
{
    return dialog.GetVisible() && dialog.minimized() && dialog.dialog_state().minimize_to_bottom;
}

} // namespace

void CGuiCore::raise(GuiEventType type, CDXUTControl& control)
{
    const tarn::EventKind* kind = on_event ? tarn::event_kind(type) : nullptr;
    if (!kind || !tarn::happens_to(*kind, control.GetType()))
        return;
    const tarn::FieldBase* field = control.fields().find(kind->value);
    on_event({.type = type, .control = &control, .value = field ? control.property(*field) : tarn::Value()});
}

void CGuiCore::raise(GuiEventType type, CDXUTDialog& dialog)
{
    if (on_event)
        on_event({.type = type, .dialog = &dialog});
}

std::vector<CDXUTDialog*> CGuiCore::shown_dialogs() const
{
    std::vector<CDXUTDialog*> order;
    for (const bool on_top : {true, false})
        for (auto dialog = GetDialogs().crbegin(); dialog != GetDialogs().crend(); ++dialog)
            if ((*dialog)->is_seen() && (*dialog)->dialog_state().always_on_top == on_top)
                order.push_back(*dialog);
    if (m_root->is_seen())
        order.push_back(m_root.get());
    return order;
}

CDXUTDialog* CGuiCore::active_dialog() const
{
    const tarn::LiveState& now = live();
    if (now.focused && now.focused->can_be_reached())
        return now.focused->dialog();
    const auto is_open = [](const CDXUTDialog* dialog) { return dialog->is_seen() && !dialog->minimized(); };
    if (now.clicked && is_open(now.clicked))
        return now.clicked;
    const std::vector<CDXUTDialog*> shown = shown_dialogs();
    const auto top = std::find_if(shown.begin(), shown.end(), is_open);
    return top == shown.end() ? m_root.get() : *top;
}

void CGuiCore::activate(CDXUTDialog& dialog)
{
    damage_active();
    if (live().focused && live().focused->dialog() != &dialog)
        set_focused(nullptr);
    live().clicked = &dialog;
    if (const qsizetype layer = GetDialogs().indexOf(&dialog); layer >= 0 && layer + 1 < GetDialogs().size()) {
        tarn::IdList order = core_state().dialogs;
        order.move(layer, order.size() - 1);
        document().reorder(*this, dialog_kind(), order);
    }
    damage_active();
}

/// The active dialog looks different from the others.
void CGuiCore::damage_active()
{
    add_damage(active_dialog()->drawn_bounds());
}

void CGuiCore::set_focused(CDXUTControl* control)
{
    if (control && !control->GetEnabled())
        control = nullptr;
    if (live().focused == control)
        return;
    if (m_live.popup && m_live.popup != control)
        m_live.popup->close_popup();
    damage_active();
    CDXUTControl* const before = std::exchange(live().focused, control);
    damage_active();
    show_caret();
    for (const CDXUTControl* changed : {before, control})
        if (changed)
            changed->redraw();
}

bool CGuiCore::advance(double now)
{
    m_now = now;
    const bool fades = m_transitions->advance(*this, now, double(core_state().animation_speed));
    return blink(now) || fades;
}

/// Carets do; true when one is to be drawn anew.
bool CGuiCore::blink(double now)
{
    const double period = QGuiApplication::styleHints()->cursorFlashTime() / 1000.0; // 0: carets stand still
    const bool shown = period <= 0 || std::fmod(now - m_caret_since, period) < period / 2;
    if (std::exchange(m_live.caret_shown, shown) == shown)
        return false;
    const CDXUTControl* focused = live().focused;
    if (!focused || focused->caret_rect().isEmpty())
        return false;
    focused->redraw();
    return true;
}

void CGuiCore::show_caret()
{
    m_caret_since = m_now;
    m_live.caret_shown = true;
}

QRectF CGuiCore::minimized_bar(const CDXUTDialog& dialog) const
{
    std::vector<const CDXUTDialog*> bars{&dialog};
    for (const CDXUTDialog* other : GetDialogs())
        if (is_bar(*other) && other->minimized_as() < dialog.minimized_as())
            bars.push_back(other);
    std::sort(bars.begin(), bars.end(),
              [](const CDXUTDialog* a, const CDXUTDialog* b) { return a->minimized_as() < b->minimized_as(); });
    double left = 0;
    double bottom = m_screen.height();
    double row_height = 0;
    QSizeF size(0, 0);
    for (const CDXUTDialog* bar : bars) {
        left += size.width();
        size = QSizeF(std::min(double(bar->rect().width()), widest_bar),
                      bar->dialog_state().caption_height * bar->scale_y());
        if (left > 0 && left + size.width() > m_screen.width()) {
            left = 0;
            bottom -= std::exchange(row_height, 0);
        }
        row_height = std::max(row_height, size.height());
    }
    return {QPointF(left, bottom - size.height()), size};
}

/// A dialog was opened, minimised or hidden: another one may be active, and bars close up.
void CGuiCore::shown_changed()
{
    if (m_selection.editing)
        return;
    damage_active();
    for (CDXUTDialog* dialog : GetDialogs())
        if (is_bar(*dialog))
            dialog->damage_bounds();
}

// Menus ---------------------------------------------------------------------------------------------------------------

tarn::OpenMenu* CGuiCore::open_menu() const
{
    const_cast<CGuiCore*>(this)->follow_structure();
    return m_open_menu.get();
}

void CGuiCore::raise_menu(ModelObject& owner, tarn::FieldKey field, QPointF place)
{
    if (!on_event)
        return open_bound_menu(owner, field, place);
    on_event({.type = EVENT_MENU_OPENS,
              .control = dynamic_cast<CDXUTControl*>(&owner),
              .dialog = dynamic_cast<CDXUTDialog*>(&owner),
              .menu_field = field,
              .place = place});
}

void CGuiCore::open_bound_menu(ModelObject& owner, tarn::FieldKey field, QPointF place)
{
    const tarn::FieldBase* named = owner.fields().find(field);
    const tarn::Value value = named ? owner.property(*named) : tarn::Value();
    const auto* reference = std::get_if<tarn::ObjectRef>(&value);
    CDXUTMenu* menu = reference ? find_menu(reference->id) : nullptr;
    const auto* control = dynamic_cast<const CDXUTControl*>(&owner);
    const CDXUTDialog* dialog = control ? control->dialog() : dynamic_cast<const CDXUTDialog*>(&owner);
    if (menu && dialog && dialog->GetVisible() && (!control || control->GetVisible()))
        pop_menu(*menu, place, &owner);
}

void CGuiCore::pop_menu(CDXUTMenu& menu, QPointF place, ModelObject* owner)
{
    close_menu();
    if (menu.items().isEmpty())
        return;
    if (m_live.popup)
        m_live.popup->close_popup();
    m_open_menu = std::make_unique<tarn::OpenMenu>(*this, menu, owner, place);
}

void CGuiCore::close_menu()
{
    if (const auto closed = std::exchange(m_open_menu, nullptr))
        add_damage(closed->bounds());
}

void CGuiCore::choose_menu_item(CDXUTMenuItem& item)
{
    const auto owner = m_open_menu ? m_open_menu->owner() : nullptr;
    close_menu();
    if (item.item_state().checkable)
        item.set_checked(!item.item_state().checked);
    if (on_event)
        on_event({.type = EVENT_MENU_ITEM_CHOSEN,
                  .control = dynamic_cast<CDXUTControl*>(owner.get()),
                  .dialog = dynamic_cast<CDXUTDialog*>(owner.get()),
                  .value = item.item_state().checkable ? tarn::Value(item.item_state().checked) : tarn::Value(),
                  .menu_item = &item});
}

void CGuiCore::menu_changed(const CDXUTMenu& menu)
{
    if (m_open_menu && &m_open_menu->menu() == &menu && menu.is_attached())
        m_open_menu->follow_menu();
}
