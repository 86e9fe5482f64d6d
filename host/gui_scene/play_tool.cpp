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

bool PlayTool::key(int key, Qt::KeyboardModifiers)
{
    switch (key) {
    case Qt::Key_Tab: return m_input.key_pressed(GuiInput::Key::Next);
    case Qt::Key_Backtab: return m_input.key_pressed(GuiInput::Key::Previous);
    case Qt::Key_Space:
    case Qt::Key_Return: return m_input.key_pressed(GuiInput::Key::Activate);
    default: return true; // None of the interface's keys reaches the editor.
    }
}

} // namespace tarn
