#include "gui_input.h"

#include "dxut_control.h"
#include "dxut_dialog.h"
#include "dxut_menu.h"
#include "dxut_menu_item.h"
#include "gui_core.h"
#include "open_menu.h"
#include "tab_order.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tarn {

namespace {

constexpr int least_seen = 48; ///< pixels of a dialog's caption bar that stay on the screen

CDXUTControl* control_in(const CDXUTDialog& dialog, QPointF place)
{
    if (dialog.minimized())
        return nullptr;
    const QPointF inside = dialog.to_client(place);
    const auto& controls = dialog.controls();
    const auto found = std::find_if(controls.crbegin(), controls.crend(), [&](const CDXUTControl* control) {
        return control->is_seen() && control->contains(inside);
    });
    return found == controls.crend() ? nullptr : *found;
}

void redraw(const CDXUTControl* control)
{
    if (control)
        control->redraw();
}

QPointF local_place(const CDXUTControl& control, QPointF on_screen)
{
    return control.to_local(control.dialog()->to_client(on_screen));
}

} // namespace

GuiInput::Hit GuiInput::hit(const CGuiCore& core, QPointF place)
{
    const CDXUTDialog* in_world = core.live().in_world;
    for (CDXUTDialog* dialog : core.shown_dialogs()) {
        if (in_world ? dialog != in_world : core.is_in_world(*dialog))
            continue;
        if (!dialog->drawn_bounds().contains(place))
            continue;
        if (CDXUTControl* control = control_in(*dialog, place))
            return {dialog, control};
        if (!dialog->is_root() && dialog->outer_rect().contains(place))
            return {dialog, nullptr};
    }
    return {};
}

void GuiInput::set_hovered(CDXUTControl* control)
{
    LiveState& live = m_core.live();
    if (live.hovered == control)
        return;
    redraw(live.hovered); // with what it shows above the others
    CDXUTControl* const before = std::exchange(live.hovered, control);
    redraw(control);
    if (before) {
        before->mouse_left();
        m_core.raise(EVENT_BUTTON_MOUSE_LEFT, *before);
    }
    if (control)
        m_core.raise(EVENT_BUTTON_MOUSE_ENTERED, *control);
}

void GuiInput::hover_caption(CDXUTDialog* dialog, QPointF place)
{
    CaptionSpot spot;
    for (const auto button : {CDXUTDialog::CaptionButton::Close, CDXUTDialog::CaptionButton::Minimize})
        if (dialog && dialog->caption_button_rect(button).contains(place))
            spot = {dialog, int(button)};
    LiveState& live = m_core.live();
    if (live.caption_pressed.dialog && spot != live.caption_pressed)
        spot = {};
    const CaptionSpot before = std::exchange(live.caption_hovered, spot);
    if (before == spot)
        return;
    for (const CaptionSpot& changed : {before, spot})
        if (changed.dialog)
            m_core.add_damage(changed.dialog->caption_rect());
}

/// The dialog follows the mouse, but so far only that its caption bar can be taken again.
void GuiInput::drag_dialog(QPointF place)
{
    const QPoint wanted = (place - m_grip).toPoint();
    const QSizeF bar = m_dragged->caption_rect().size();
    const QSize screen = m_core.screen_size();
    const int seen = std::min(least_seen, int(bar.width()));
    const int x = std::clamp(wanted.x(), seen - int(bar.width()), std::max(seen, screen.width()) - seen);
    const int y = std::clamp(wanted.y(), 0, std::max(0, screen.height() - int(bar.height())));
    if (m_dragged->SetLocation(x, y))
        m_core.raise(EVENT_DIALOG_MOVED, *m_dragged);
}

bool GuiInput::mouse_moved(QPointF place)
{
    m_core.live().mouse = place;
    if (OpenMenu* menu = m_core.open_menu()) {
        menu->mouse_moved(place);
        set_hovered(nullptr);
        return true;
    }
    if (m_dragged && m_dragged->is_attached()) {
        drag_dialog(place);
        return true;
    }
    if (CDXUTControl* popup = open_popup()) {
        popup->popup_moved(popup->dialog()->to_client(place));
        set_hovered(nullptr);
        hover_caption(nullptr, place);
        return true;
    }
    CDXUTControl* const pressed = m_core.live().pressed;
    if (pressed && pressed->dialog())
        pressed->mouse_dragged(local_place(*pressed, place));
    const auto [dialog, control] = hit(m_core, place);
    const bool takes = control && control->is_interactive() && control->GetEnabled();
    // While a button of the mouse is down, what it went down on has the mouse.
    const bool free = (!pressed || pressed == control) && !m_core.live().caption_pressed.dialog;
    set_hovered(takes && free ? control : nullptr);
    if (CDXUTControl* hovered = m_core.live().hovered; hovered && hovered->dialog())
        hovered->mouse_over(local_place(*hovered, place));
    hover_caption(pressed ? nullptr : dialog, place);
    return dialog != nullptr;
}

void GuiInput::close(CDXUTDialog& dialog)
{
    if (dialog.SetVisible(false))
        m_core.raise(EVENT_DIALOG_CLOSED, dialog);
}

void GuiInput::minimize_or_restore(CDXUTDialog& dialog)
{
    dialog.set_minimized(!dialog.minimized());
    m_core.raise(dialog.minimized() ? EVENT_DIALOG_MINIMIZED : EVENT_DIALOG_RESTORED, dialog);
}

bool GuiInput::press_caption(CDXUTDialog& dialog, QPointF place)
{
    if (!dialog.caption_rect().contains(place))
        return false;
    LiveState& live = m_core.live();
    if (live.caption_hovered.dialog == &dialog) {
        live.caption_pressed = live.caption_hovered;
        m_core.add_damage(dialog.caption_rect());
    } else if (dialog.dialog_state().movable && !dialog.minimized()) {
        m_dragged = &dialog;
        m_grip = place - QPointF(dialog.rect().topLeft());
    }
    return true;
}

/// The mouse went up; it does what the button does when it is still there.
void GuiInput::release_caption(const CaptionSpot& pressed)
{
    if (!pressed.dialog)
        return;
    m_core.add_damage(pressed.dialog->caption_rect());
    if (m_core.live().caption_hovered != pressed)
        return;
    if (pressed.button == int(CDXUTDialog::CaptionButton::Close))
        close(*pressed.dialog);
    else
        minimize_or_restore(*pressed.dialog);
}

/// The control whose list is dropped down and can be used; one that cannot is closed.
CDXUTControl* GuiInput::open_popup()
{
    CDXUTControl* const owner = m_core.live().popup;
    if (!owner || !owner->popup_rect().isEmpty())
        return owner;
    owner->close_popup();
    return nullptr;
}

/// A press while a list is dropped down goes to the list, or closes it.
bool GuiInput::press_popup(QPointF place)
{
    CDXUTControl* const owner = open_popup();
    if (!owner)
        return false;
    const QPointF inside = owner->dialog()->to_client(place);
    if (owner->popup_rect().contains(inside))
        owner->popup_pressed(inside);
    else
        owner->close_popup();
    return true;
}

/// A press while a menu is open belongs to it, or closes it.
bool GuiInput::press_menu(QPointF place)
{
    const OpenMenu* menu = m_core.open_menu();
    if (menu && !menu->contains(place))
        m_core.close_menu();
    return menu != nullptr;
}

bool GuiInput::mouse_pressed(QPointF place)
{
    if (press_menu(place) || press_popup(place))
        return true;
    mouse_moved(place);
    CDXUTDialog* dialog = dialog_at(m_core, place);
    if (!dialog)
        return false;
    m_core.activate(*dialog);
    CDXUTControl* hovered = m_core.live().hovered;
    if (!hovered && press_caption(*dialog, place))
        return true;
    m_core.live().pressed = hovered;
    m_core.set_focused(hovered);
    redraw(hovered);
    if (hovered) {
        hovered->mouse_pressed(local_place(*hovered, place));
        m_core.raise(EVENT_BUTTON_LEFT_DOWN, *hovered);
    }
    return true;
}

bool GuiInput::mouse_double_clicked(QPointF place)
{
    const bool taken = mouse_pressed(place);
    if (CDXUTControl* pressed = m_core.live().pressed)
        pressed->double_clicked(local_place(*pressed, place));
    return taken;
}

bool GuiInput::right_clicked(QPointF place)
{
    m_core.close_menu();
    if (CDXUTControl* popup = m_core.live().popup)
        popup->close_popup();
    m_core.live().mouse = place;
    const auto [dialog, control] = hit(m_core, place);
    const auto has_menu = [](const ModelObject* object, FieldKey field) {
        const FieldBase* named = object ? object->fields().find(field) : nullptr;
        return named && !named->is_default(object->shown_state());
    };
    constexpr FieldKey of_control = key<&ControlExtras::right_click_menu>;
    constexpr FieldKey of_dialog = key<&DialogState::right_click_menu>;
    CDXUTDialog* home = dialog ? dialog : m_core.GetRootDialog();
    if (control && control->GetEnabled() && has_menu(control, of_control))
        m_core.raise_menu(*control, of_control, place);
    else if (has_menu(home, of_dialog))
        m_core.raise_menu(*home, of_dialog, place);
    else
        return false;
    return true;
}

/// A button's own answer to a click comes before its menu.
void GuiInput::click(CDXUTControl& control, QPointF menu_place)
{
    control.clicked();
    constexpr FieldKey menu = key<&ControlExtras::click_menu>;
    const FieldBase* named = control.fields().find(menu);
    if (named && !named->is_default(control.shown_state()))
        m_core.raise_menu(control, menu, menu_place);
}

bool GuiInput::mouse_released(QPointF place)
{
    if (OpenMenu* menu = m_core.open_menu()) {
        if (CDXUTMenuItem* chosen = menu->mouse_released(place))
            m_core.choose_menu_item(*chosen);
        return true;
    }
    const bool dragged = std::exchange(m_dragged, nullptr) != nullptr;
    if (CDXUTControl* popup = open_popup())
        popup->popup_released(popup->dialog()->to_client(place));
    CDXUTControl* const pressed = std::exchange(m_core.live().pressed, nullptr);
    const CaptionSpot button = std::exchange(m_core.live().caption_pressed, {});
    mouse_moved(place);
    redraw(pressed);
    if (pressed && pressed->dialog())
        pressed->mouse_released(local_place(*pressed, place));
    if (pressed)
        m_core.raise(EVENT_BUTTON_LEFT_UP, *pressed);
    if (pressed && pressed == m_core.live().hovered)
        click(*pressed, place);
    release_caption(button);
    mouse_moved(place); // What is there now may be something else.
    return dragged || pressed || button.dialog || m_core.live().hovered;
}

bool GuiInput::covers(QPointF place) const
{
    if (m_core.open_menu())
        return true;
    if (const CDXUTControl* popup = m_core.live().popup;
        popup && popup->dialog() && popup->popup_rect().contains(popup->dialog()->to_client(place)))
        return true;
    // The root dialog is as large as the screen, and what it shows may be no more than a picture on the world.
    const auto [dialog, control] = hit(m_core, place);
    return dialog && (!dialog->is_root() || (control && control->is_interactive()));
}

bool GuiInput::wheel_turned(QPointF place, double steps)
{
    if (OpenMenu* menu = m_core.open_menu()) {
        menu->wheel_turned(place, steps);
        return true;
    }
    if (CDXUTControl* popup = open_popup())
        return popup->wheel_turned(steps);
    CDXUTControl* control = control_at(m_core, place);
    const bool takes = control && control->is_interactive() && control->GetEnabled();
    return (takes && control->wheel_turned(steps)) || covers(place);
}

void GuiInput::hand_key_to_menu(int key)
{
    const OpenMenu::Answer answer = m_core.open_menu()->key_pressed(key);
    if (answer.chosen)
        m_core.choose_menu_item(*answer.chosen);
    else if (answer.closes)
        m_core.close_menu();
}

bool GuiInput::key_pressed(int key, Qt::KeyboardModifiers modifiers)
{
    if (m_core.open_menu()) {
        hand_key_to_menu(key);
        return true;
    }
    CDXUTControl* focused = m_core.live().focused;
    if (CDXUTControl* popup = open_popup(); popup && key == Qt::Key_Escape) {
        popup->close_popup();
        return true;
    }
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
        move_focus(key == Qt::Key_Tab);
        return true;
    }
    if (!focused || !focused->can_be_reached())
        return false;
    if (focused->key_pressed(key, modifiers))
        return true;
    if (key != Qt::Key_Space && key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    click(*focused, focused->screen_bounds().bottomLeft());
    return true;
}

void GuiInput::key_released(int key)
{
    if (CDXUTControl* focused = m_core.live().focused; focused && focused->can_be_reached())
        focused->key_released(key);
}

bool GuiInput::text_typed(const QString& text, const QString& preedit)
{
    if (OpenMenu* menu = m_core.open_menu()) {
        menu->text_typed(text);
        return true;
    }
    CDXUTControl* focused = m_core.live().focused;
    return focused && focused->can_be_reached() && focused->text_typed(text, preedit);
}

QRectF GuiInput::caret() const
{
    const CDXUTControl* focused = m_core.live().focused;
    if (!focused || !focused->can_be_reached() || m_core.open_menu())
        return {};
    return focused->dialog()->to_screen(focused->rotation_transform().mapRect(focused->caret_rect()));
}

/// Tab goes round in the active dialog; when there is nothing to be reached in it, in the topmost one where there is.
void GuiInput::move_focus(bool forward)
{
    std::vector<CDXUTControl*> stops = tab_stops(*m_core.active_dialog());
    for (const CDXUTDialog* dialog : m_core.shown_dialogs())
        if (stops.empty())
            stops = tab_stops(*dialog);
    if (stops.empty())
        return;
    const auto now = std::find(stops.begin(), stops.end(), m_core.live().focused);
    const auto count = static_cast<std::ptrdiff_t>(stops.size());
    std::ptrdiff_t index = forward ? 0 : count - 1;
    if (now != stops.end())
        index = ((now - stops.begin()) + (forward ? 1 : count - 1)) % count;
    m_core.set_focused(stops[static_cast<std::size_t>(index)]);
}

} // namespace tarn
