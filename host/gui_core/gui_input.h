#pragma once

#include <QPointF>

#include <functional>

class CGuiCore;
class CDXUTControl;
class CDXUTDialog;

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
    /// Lets go of what is being dragged.
    void cancel() { m_dragged = nullptr; }
    enum class Key { Next, Previous, Activate };
    bool key_pressed(Key key);

    /// The topmost visible dialog at `place`, the root dialog only over one of its controls; null for none.
    static CDXUTDialog* dialog_at(const CGuiCore& core, QPointF place);
    /// The topmost visible control at `place` in any dialog; a dialog hides what lies below it.
    static CDXUTControl* control_at(const CGuiCore& core, QPointF place);

private:
    bool press_caption(CDXUTDialog& dialog, QPointF place);
    void set_hovered(CDXUTControl* control);
    void set_focused(CDXUTControl* control);

    CGuiCore& m_core;
    CDXUTDialog* m_dragged = nullptr;
    QPointF m_grip; ///< from the dragged dialog's corner to the mouse
};

} // namespace tarn
