#pragma once

#include "timeline_drag.h"

#include <QtGlobal>

namespace tarn {

/// The left mouse button on the timeline, from a press to its release: what drags do, and scrolling at the edges.
class TimelineMouse {
public:
    explicit TimelineMouse(TimelineHost& host) : m_host(host) {}
    ~TimelineMouse();

    // `tick` is a clock in milliseconds that may wrap around.
    void press(const TimelinePoint& point, quint32 tick);
    void move(const TimelinePoint& point, quint32 tick);
    void release(const TimelinePoint& point);
    /// What was under way is as if it had not begun.
    void cancel();
    /// A tick of the scrolling at the edges.
    void scroll_step();

    bool is_down() const { return m_drag != nullptr; }
    int drag_mode() const { return m_drag ? m_drag->mode() : -1; }
    Qt::CursorShape cursor() const { return m_drag ? m_drag->cursor() : Qt::ArrowCursor; }

private:
    void scroll_at_edges();
    std::unique_ptr<TimelineDrag> end_press();
    void set_scrolling(int direction);

    TimelineHost& m_host;
    std::unique_ptr<TimelineDrag> m_drag; ///< null while the button is up
    TimelinePoint m_mouse;                ///< where it was last
    quint32 m_press_tick = 0;
    bool m_started = false; ///< the press is too long for a click
    int m_scrolling = 0;    ///< -1 to the left, 1 to the right
};

} // namespace tarn
