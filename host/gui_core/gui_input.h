#pragma once

#include "gui_core.h"

#include <QPointF>
#include <QRectF>
#include <QString>
#include <Qt>

class CDXUTMenuItem;

namespace tarn {

/// Mouse and keyboard of an interface that runs: controls are hovered, pressed and clicked, dialogs are moved by their
/// caption, minimised and closed.
class GuiInput {
public:
    explicit GuiInput(CGuiCore& core) : m_core(core) {}

    /// Places are pixels of the screen. Each answers whether the interface took the event.
    bool mouse_moved(QPointF place);
    bool mouse_pressed(QPointF place);
    bool mouse_released(QPointF place);
    /// The second press of a double-click, in the place of mouse_pressed().
    bool mouse_double_clicked(QPointF place);
    /// A click with the right button: the menu of what is there opens.
    bool right_clicked(QPointF place);
    /// Lets go of what is being dragged.
    void cancel() { m_dragged = nullptr; }
    /// Whether the interface hides the world at `place`, so that what is done there with the wheel and the other buttons
    /// does not go to the world.
    bool covers(QPointF place) const;
    /// Positive steps turn the wheel away from the user.
    bool wheel_turned(QPointF place, double steps);
    /// A key of the keyboard, as Qt::Key; the focused control comes first.
    bool key_pressed(int key, Qt::KeyboardModifiers modifiers);
    void key_released(int key);
    /// Text from the keyboard or an input method.
    bool text_typed(const QString& text, const QString& preedit);
    /// Where the next character goes, pixels of the screen; empty when nothing takes text.
    QRectF caret() const;

    struct Hit {
        CDXUTDialog* dialog = nullptr;
        CDXUTControl* control = nullptr;
    };
    /// What is topmost at `place`: a visible dialog, the root dialog only over one of its controls, and the visible
    /// control of it that is there. A dialog hides what lies below it.
    static Hit hit(const CGuiCore& core, QPointF place);
    static CDXUTDialog* dialog_at(const CGuiCore& core, QPointF place) { return hit(core, place).dialog; }
    static CDXUTControl* control_at(const CGuiCore& core, QPointF place) { return hit(core, place).control; }

private:
    CDXUTControl* open_popup();
    bool press_popup(QPointF place);
    bool press_menu(QPointF place);
    void click(CDXUTControl& control, QPointF menu_place);
    void hand_key_to_menu(int key);
    void move_focus(bool forward);
    void drag_dialog(QPointF place);
    void close(CDXUTDialog& dialog);
    void minimize_or_restore(CDXUTDialog& dialog);
    bool press_caption(CDXUTDialog& dialog, QPointF place);
    void release_caption(const CaptionSpot& pressed);
    void hover_caption(CDXUTDialog* dialog, QPointF place);
    void set_hovered(CDXUTControl* control);

    CGuiCore& m_core;
    CDXUTDialog* m_dragged = nullptr;
    QPointF m_grip; ///< from the dragged dialog's corner to the mouse
};

} // namespace tarn
