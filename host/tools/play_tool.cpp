#include "play_tool.h"

#include "gui_core/gui_core.h"

namespace tarn {

PlayTool::PlayTool(CGuiCore& core, std::function<void()> after_input)
    : m_document(core.document()), m_input(core), m_after_input(std::move(after_input))
{
}

bool PlayTool::done(bool taken) const
{
    m_after_input();
    return taken;
}

bool PlayTool::hand_mouse(const MouseEvent& event)
{
    if (event.kind == MouseEvent::Kind::Move)
        return m_input.mouse_moved(event.place);
    if (event.button == Qt::RightButton && event.kind == MouseEvent::Kind::Release)
        return m_input.right_clicked(event.place);
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
    const ShownWrites writes(m_document);
    return done(hand_mouse(event));
}

bool PlayTool::key(int key, Qt::KeyboardModifiers modifiers)
{
    const ShownWrites writes(m_document);
    m_input.key_pressed(key, modifiers);
    return done(true); // None of the interface's keys reaches the editor.
}

bool PlayTool::text(const QString& text, const QString& preedit)
{
    const ShownWrites writes(m_document);
    return done(m_input.text_typed(text, preedit));
}

bool PlayTool::wheel(QPointF place, double steps)
{
    const ShownWrites writes(m_document);
    return done(m_input.wheel_turned(place, steps));
}

} // namespace tarn
