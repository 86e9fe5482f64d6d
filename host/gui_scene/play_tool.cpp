#include "play_tool.h"

namespace tarn {

bool PlayTool::mouse(const MouseEvent& event)
{
    if (event.kind == MouseEvent::Kind::Move)
        return m_input.mouse_moved(event.place);
    if (event.button != Qt::LeftButton)
        return false;
    if (event.kind == MouseEvent::Kind::Release)
        return m_input.mouse_released(event.place);
    return m_input.mouse_pressed(event.place);
}

bool PlayTool::key(int key, Qt::KeyboardModifiers modifiers)
{
    m_input.key_pressed(key, modifiers);
    return true; // None of the interface's keys reaches the editor.
}

bool PlayTool::text(const QString& text, const QString& preedit)
{
    return m_input.text_typed(text, preedit);
}

bool PlayTool::wheel(QPointF place, double steps)
{
    return m_input.wheel_turned(place, steps);
}

} // namespace tarn
