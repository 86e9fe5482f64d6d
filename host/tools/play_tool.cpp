#include "play_tool.h"

namespace tarn {

bool PlayTool::done(bool taken) const
{
    m_after_input();
    return taken;
}

bool PlayTool::hand_mouse(const MouseEvent& event)
{
    if (event.kind == MouseEvent::Kind::Move)
        return m_input.mouse_moved(event.place);
    if (event.button != Qt::LeftButton)
        return false;
    switch (event.kind) {
    case MouseEvent::Kind::Release: return m_input.mouse_released(event.place);
    case MouseEvent::Kind::DoubleClick: return m_input.mouse_double_clicked(event.place);
    default: return m_input.mouse_pressed(event.place);
    }
}

bool PlayTool::mouse(const MouseEvent& event)
{
    return done(hand_mouse(event));
}

bool PlayTool::key(int key, Qt::KeyboardModifiers modifiers)
{
    m_input.key_pressed(key, modifiers);
    return done(true); // None of the interface's keys reaches the editor.
}

bool PlayTool::text(const QString& text, const QString& preedit)
{
    return done(m_input.text_typed(text, preedit));
}

bool PlayTool::wheel(QPointF place, double steps)
{
    return done(m_input.wheel_turned(place, steps));
}

} // namespace tarn
