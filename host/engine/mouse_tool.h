#pragma once

#include <QPointF>
#include <Qt>
#include <QtGlobal>

class QPainter;

namespace tarn {

/// What the mouse did in a view. Places are pixels of the view, which are those of the interface's screen.
struct MouseEvent {
    enum class Kind { Press, Move, Release, DoubleClick };
    Kind kind = Kind::Move;
    QPointF place;
    Qt::MouseButton button = Qt::NoButton; ///< of a press, release or double-click
    Qt::KeyboardModifiers modifiers;
};

/// What the left mouse button does in the views.
class MouseTool {
public:
    virtual ~MouseTool() = default;

    /// True when the tool took the event.
    virtual bool mouse(const MouseEvent& event) = 0;
    /// A key was pressed in a view; true when the tool took it.
    virtual bool key(int key, Qt::KeyboardModifiers modifiers) = 0;
    /// Draws what belongs to the tool over a view: outlines, handles, read-outs.
    virtual void paint(QPainter& painter) = 0;
    /// Ends what is under way as if it had not begun.
    virtual void cancel() = 0;
    virtual Qt::CursorShape cursor() const { return Qt::ArrowCursor; }
};

} // namespace tarn
