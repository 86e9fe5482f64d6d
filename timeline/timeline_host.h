#pragma once

#include <QString>

class CBaseWorld;
class QWidget;

namespace tarn {

struct TimelineView;

/// The timeline as its drags, commands and keys use it.
class TimelineHost {
public:
    virtual TimelineView& timeline() = 0;
    virtual CBaseWorld* world() const = 0; ///< null without a scene
    virtual QWidget* owner() = 0;          ///< boxes open over it
    /// Moves the cursor, not beyond the end, and what the timebar animates; with the time held the cursor alone.
    virtual void set_current_time(float time) = 0;
    virtual void hold_time(bool on) = 0;
    /// Scrolls so that the time can be seen.
    virtual void show_time(float time) = 0;
    /// Origin or scale are others.
    virtual void view_moved() = 0;
    virtual void redraw() = 0;
    /// The timeline and the views.
    virtual void redraw_all() = 0;
    /// Tells something at the mouse that needs no answer.
    virtual void say(const QString& text) = 0;
    /// Starts or stops to play.
    virtual void toggle_play() = 0;
    /// Ticks for scrolling at the edges.
    virtual void tick_scrolling(bool on) = 0;

protected:
    ~TimelineHost() = default;
};

} // namespace tarn
