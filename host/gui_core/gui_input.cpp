#include "gui_input.h"

#include "dxut_control.h"
#include "dxut_dialog.h"
#include "dxut_menu.h"
#include "dxut_menu_item.h"
#include "gui_core.h"
#include "open_menu.h"

#include <algorithm>
#include <vector>

namespace tarn {

namespace {

/// Visible dialogs from the top layer to the bottom, the root dialog last.
std::vector<CDXUTDialog*> from_top(const CGuiCore& core)
{
    std::vector<CDXUTDialog*> order;
    for (const bool on_top : {true, false})
        for (auto dialog = core.GetDialogs().crbegin(); dialog != core.GetDialogs().crend(); ++dialog)
            if ((*dialog)->GetVisible() && (*dialog)->dialog_state().always_on_top == on_top)
                order.push_back(*dialog);
    if (core.GetRootDialog()->GetVisible())
        order.push_back(core.GetRootDialog());
    return order;
}

CDXUTControl* control_in(const CDXUTDialog& dialog, QPointF place)
{
    if (dialog.minimized())
        return nullptr;
    const QPointF inside = dialog.to_client(place);
    const auto& controls = dialog.controls();
    const auto found = std::find_if(controls.crbegin(), controls.crend(), [&](const CDXUTControl* control) {
        return control->GetVisible() && control->contains(inside);
    });
    return found == controls.crend() ? nullptr : *found;
}

bool can_be_reached(const CDXUTControl& control)
{
    return control.is_interactive() && control.GetVisible() && control.GetEnabled() && control.dialog()
        && control.dialog()->GetVisible() && !control.dialog()->minimized();
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
    for (CDXUTDialog* dialog : from_top(core)) {
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
    CDXUTControl* const before = std::exchange(live.hovered, control);
    redraw(before);
    redraw(control);
    if (before)
        m_core.raise(EVENT_BUTTON_MOUSE_LEFT, *before);
    if (control)
        m_core.raise(EVENT_BUTTON_MOUSE_ENTERED, *control);
}

bool GuiInput::mouse_moved(QPointF place)
{
    m_core.live().mouse = place;
    if (OpenMenu* menu = m_core.open_menu()) {
        menu->mouse_moved(place);
        set_hovered(nullptr);
        return true;
    }
    if (m_dragged) {
        const QPoint corner = (place - m_grip).toPoint();
        if (m_dragged->SetLocation(corner.x(), corner.y()))
            m_core.raise(EVENT_DIALOG_MOVED, *m_dragged);
        return true;
    }
    if (CDXUTControl* pressed = m_core.live().pressed)
        pressed->mouse_dragged(local_place(*pressed, place));
    const auto [dialog, control] = hit(m_core, place);
    const bool takes = control && control->is_interactive() && control->GetEnabled();
    set_hovered(takes ? control : nullptr);

    LiveState& live = m_core.live();
    int button = -1;
    for (const auto candidate : {CDXUTDialog::CaptionButton::Close, CDXUTDialog::CaptionButton::Minimize})
        if (dialog && dialog->caption_button_rect(candidate).contains(place))
            button = int(candidate);
    if (button != live.caption_button || (button >= 0 && live.caption_dialog != dialog)) {
        if (live.caption_dialog)
            m_core.add_damage(live.caption_dialog->caption_rect());
        live.caption_button = button;
        live.caption_dialog = button < 0 ? nullptr : dialog;
        if (dialog)
            m_core.add_damage(dialog->caption_rect());
    }
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
    if (dialog.caption_button_rect(CDXUTDialog::CaptionButton::Close).contains(place))
        close(dialog);
    else if (dialog.caption_button_rect(CDXUTDialog::CaptionButton::Minimize).contains(place))
        minimize_or_restore(dialog);
    else if (dialog.dialog_state().movable && !dialog.minimized()) {
        m_dragged = &dialog;
        m_grip = place - QPointF(dialog.rect().topLeft());
    }
    return true;
}

/// A press while a list is dropped down goes to the list, or closes it.
bool GuiInput::press_popup(QPointF place)
{
    CDXUTControl* owner = m_core.live().popup;
    if (!owner || !owner->dialog())
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
    CDXUTControl* pressed = std::exchange(m_core.live().pressed, nullptr);
    mouse_moved(place);
    redraw(pressed);
    if (pressed)
        m_core.raise(EVENT_BUTTON_LEFT_UP, *pressed);
    if (pressed && pressed == m_core.live().hovered)
        click(*pressed, place);
    return dragged || pressed || m_core.live().hovered;
}

bool GuiInput::wheel_turned(QPointF place, double steps)
{
    if (OpenMenu* menu = m_core.open_menu()) {
        menu->wheel_turned(place, steps);
        return true;
    }
    if (CDXUTControl* popup = m_core.live().popup)
        return popup->wheel_turned(steps);
    CDXUTControl* control = control_at(m_core, place);
    return control && control->is_interactive() && control->GetEnabled() && control->wheel_turned(steps);
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
    if (key == Qt::Key_Escape && m_core.live().popup) {
        m_core.live().popup->close_popup();
        return true;
    }
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
        move_focus(key == Qt::Key_Tab);
        return true;
    }
    if (!focused || !can_be_reached(*focused))
        return false;
    if (focused->key_pressed(key, modifiers))
        return true;
    if (key != Qt::Key_Space && key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    click(*focused, focused->screen_bounds().bottomLeft());
    return true;
}

bool GuiInput::text_typed(const QString& text, const QString& preedit)
{
    if (OpenMenu* menu = m_core.open_menu()) {
        menu->text_typed(text);
        return true;
    }
    CDXUTControl* focused = m_core.live().focused;
    return focused && can_be_reached(*focused) && focused->text_typed(text, preedit);
}

QRectF GuiInput::caret() const
{
    const CDXUTControl* focused = m_core.live().focused;
    if (!focused || !can_be_reached(*focused) || m_core.open_menu())
        return {};
    return focused->dialog()->to_screen(focused->rotation_transform().mapRect(focused->caret_rect()));
}

void GuiInput::move_focus(bool forward)
{
    std::vector<CDXUTControl*> stops;
    for (CDXUTControl* control : m_core.controls())
        if (can_be_reached(*control))
            stops.push_back(control);
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
