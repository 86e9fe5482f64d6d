#include "play_tool.h"

#include "gui_core/gui_core.h"
#include "gui_scene/scene_in_world.h"

namespace tarn {

PlayTool::PlayTool(CGuiCore& core, std::function<void()> after_input)
    : m_document(core.document()), m_core(core), m_input(core), m_after_input(std::move(after_input))
{
}

bool PlayTool::done(bool taken) const
{
    m_after_input();
    return taken;
}

/// Finds whether the mouse is over the screen's dialogs or over one in the world, and where it is there.
QPointF PlayTool::find_dialog(QPointF place)
{
    constexpr QPointF nowhere(-1e6, -1e6);
    LiveState& live = m_core.live();
    const bool holds = live.pressed || live.caption_pressed.dialog;
    const CDXUTDialog* held = holds ? live.in_world : nullptr;
    live.in_world = nullptr;
    if (!m_world || (!held && (holds || m_input.covers(place))))
        return place;
    const auto spot = m_world->spot_at(place);
    if (held) { // What was pressed has the mouse until it is let go.
        live.in_world = held;
        return spot && spot->dialog == held ? spot->place : nowhere;
    }
    if (!spot)
        return place;
    live.in_world = spot->dialog;
    return spot->place;
}

bool PlayTool::covers(QPointF place) const
{
    return (m_world && m_world->spot_at(place)) || (!m_core.live().in_world && m_input.covers(place));
}

bool PlayTool::hand_mouse(MouseEvent event)
{
    event.place = find_dialog(event.place);
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

void PlayTool::key_released(int key)
{
    const ShownWrites writes(m_document);
    m_input.key_released(key);
    done(true);
}

bool PlayTool::text(const QString& text, const QString& preedit)
{
    const ShownWrites writes(m_document);
    return done(m_input.text_typed(text, preedit));
}

bool PlayTool::wheel(QPointF place, double steps)
{
    const ShownWrites writes(m_document);
    return done(m_input.wheel_turned(find_dialog(place), steps));
}

} // namespace tarn
