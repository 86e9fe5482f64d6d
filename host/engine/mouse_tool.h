#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>
#include <Qt>
#include <QtGlobal>

class QPainter;

namespace tarn {

/// What the mouse did in a view. Places are pixels of the interface's screen.
struct MouseEvent {
    enum class Kind { Press, Move, Release, DoubleClick };
    Kind kind = Kind::Move;
    QPointF place;
    Qt::MouseButton button = Qt::NoButton; ///< of a press, release or double-click
    Qt::KeyboardModifiers modifiers;
    double scale = 1; ///< logical pixels of the view that show one pixel of the screen
    QPointF corner{}; ///< place on the screen that the view's top left corner shows
};

/// What the left mouse button does in the views.
class MouseTool {
public:
    virtual ~MouseTool() = default;

    /// True when the tool took the event.
    virtual bool mouse(const MouseEvent& event) = 0;
    /// A key was pressed in a view; true when the tool took it.
    virtual bool key(int key, Qt::KeyboardModifiers modifiers) = 0;
    /// The key was let go.
    virtual void key_released(int) {}
    /// Whether all keys are the tool's, those of the program's shortcuts among them.
    virtual bool takes_all_keys() const { return false; }
    /// Text from the keyboard or an input method, and what that is about to put in; true when the tool took it.
    virtual bool text(const QString&, const QString&) { return false; }
    /// Where the next character goes, pixels of the view; empty when the tool takes no text now.
    virtual QRectF text_caret() const { return {}; }
    /// Whether something hides the world at `place` from the mouse buttons that move the camera.
    virtual bool covers(QPointF) const { return false; }
    /// The wheel, positive steps away from the user; true when the tool took it.
    virtual bool wheel(QPointF, double) { return false; }
    /// Draws what belongs to the tool over a view: outlines, handles, read-outs. The painter draws in pixels of the
    /// screen, scaled as the view is (MouseEvent::scale).
    virtual void paint(QPainter& painter) = 0;
    /// Ends what is under way as if it had not begun.
    virtual void cancel() = 0;
    virtual Qt::CursorShape cursor() const { return Qt::ArrowCursor; }
};

} // namespace tarn
