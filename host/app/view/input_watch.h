#pragma once

#include "engine/mouse_tool.h"

namespace tarn {

/// Hears what a view hands to the interface.
class InputWatch {
public:
    virtual ~InputWatch() = default;

    /// Before one of the following, with where the mouse is. A move comes often and changes little.
    virtual void input_comes(bool is_move, QPointF mouse) = 0;
    virtual void mouse_came(const MouseEvent& event) = 0;
    virtual void key_came(int key, Qt::KeyboardModifiers modifiers) = 0;
    virtual void text_came(const QString& text) = 0;
    virtual void wheel_came(QPointF place, double steps) = 0;
    /// The camera followed the mouse; logical pixels of the view.
    virtual void camera_came(Qt::MouseButton button, QPointF way) = 0;
};

} // namespace tarn
