#pragma once

#include "engine/mouse_tool.h"
#include "hit_test.h"

#include <QElapsedTimer>

#include <memory>
#include <optional>

class CGuiPlugScene;

namespace tarn {

class AidsLayer;
class Gesture;
struct Guide;
class WorldMouse;
class WorldObject;

/// Selects dialogs and controls with the mouse, by clicks and with a marquee, moves them, and resizes them by handles.
/// One drag is one step of undo; Escape drops it.
class SelectTool : public MouseTool {
public:
    SelectTool(CGuiPlugScene& scene, AidsLayer& aids, WorldMouse& world);
    ~SelectTool() override;

    bool mouse(const MouseEvent& event) override;
    bool key(int key, Qt::KeyboardModifiers modifiers) override;
    void paint(QPainter& painter) override;
    void cancel() override;
    Qt::CursorShape cursor() const override { return m_cursor; }

private:
    /// What a press does when it turns out to be a click.
    enum class Click { Nothing, Clear, Add, Deselect, SelectOnly, Beneath };

    void press(const MouseEvent& event);
    void press_nothing(const MouseEvent& event, CDXUTDialog* home);
    void press_target(const MouseEvent& event, const std::vector<Target>& targets);
    void press_world(const MouseEvent& event, WorldObject& object);
    void drag(const MouseEvent& event);
    void release(const MouseEvent& event);
    void note_click();
    void click(QPointF place);
    void choose_element(QPointF place);
    int handle_under(QPointF place) const;
    const CDXUTControl* center_under(QPointF place) const;
    std::optional<Guide> guide_under(QPointF place) const;
    void update_cursor(QPointF place);

    CGuiPlugScene& m_scene;
    AidsLayer& m_aids;
    WorldMouse& m_world;
    std::unique_ptr<Gesture> m_gesture; ///< what a drag does; null while the button is up
    bool m_dragging = false;
    QPointF m_press_place;
    Click m_click = Click::Nothing;
    Target m_picked; ///< what the press was on
    /// Of a plain click; another one there soon after reaches what lies beneath.
    std::optional<QPointF> m_last_click;
    QElapsedTimer m_since_click;
    Qt::CursorShape m_cursor = Qt::ArrowCursor;
};

} // namespace tarn
