#pragma once

#include <Qt>

#include <memory>

namespace tarn {

class TimelineHost;
struct RowNameHit;

/// Where the mouse is, in pixels of the timeline.
struct TimelinePoint {
    int x = 0;
    int y = 0;
    Qt::KeyboardModifiers modifiers{};
};

/// What a press of the left button on the timeline does until its release. All that it changes is one step of undo.
class TimelineDrag {
public:
    virtual ~TimelineDrag() = default;

    /// The number by which automation knows the kind of drag; -1 for one that changes nothing but the cursor.
    virtual int mode() const = 0;
    /// Whether it follows the mouse at once. Others wait until the button was down long enough not to be a click.
    virtual bool is_immediate() const { return false; }
    virtual void move(const TimelinePoint& point) = 0;
    virtual void finish(const TimelinePoint& point) = 0;
    /// The button went up before the press became a drag.
    virtual void click(const TimelinePoint&) {}
    /// As if there had been no press.
    virtual void cancel() = 0;
    virtual Qt::CursorShape cursor() const { return Qt::ArrowCursor; }
    /// Whether the cursor comes along when it scrolls at the edges.
    virtual bool takes_cursor_along() const { return true; }
};

/// The drag that a press begins; what it presses on is selected, and the cursor moves. Never null.
std::unique_ptr<TimelineDrag> press_bands(TimelineHost& host, const TimelinePoint& point);
std::unique_ptr<TimelineDrag> press_rows(TimelineHost& host, const TimelinePoint& point);
/// A press on a row's name: it becomes the current one, or is folded or locked.
void press_row_name(TimelineHost& host, const RowNameHit& hit);

} // namespace tarn
