#pragma once

#include <QPointF>
#include <Qt>

class QPainter;

namespace tarn {

/// A drag of the left mouse button, from the moment at which the press became one.
class Gesture {
public:
    virtual ~Gesture() = default;

    virtual void begin() {}
    virtual void drag(QPointF place, Qt::KeyboardModifiers modifiers) = 0;
    virtual void finish() {}
    /// As if it had not begun.
    virtual void cancel() {}
    virtual void paint(QPainter& painter) const = 0;
    virtual Qt::CursorShape cursor() const = 0;
};

} // namespace tarn
