#pragma once

#include "selection_drag.h"
#include "timeline_drag.h"
#include "timeline_snap.h"
#include "timeline_view.h"

namespace tarn {

/// A drag of what is selected, in which it can be dropped off the timeline to delete it.
class ItemsDrag : public TimelineDrag {
public:
    ItemsDrag(TimelineHost& host, const TimelinePoint& press, float grabbed, SelectionDrag::Items items);

    void move(const TimelinePoint& point) override;
    void finish(const TimelinePoint& point) override;
    void cancel() override { m_items.restore(); }
    Qt::CursorShape cursor() const override;

protected:
    /// Where what was grabbed goes when the mouse is there.
    virtual float target(const TimelinePoint& point) = 0;
    virtual void drop_off() = 0;
    virtual void dropped(float) {}
    /// A few pixels, or a way up as long as that to the right, are no drag.
    bool has_moved(const TimelinePoint& point) const;
    float time_at(const TimelinePoint& point) const;

    TimelineHost& m_host;
    SelectionDrag m_items;
    TimelineSnap m_snap;
    TimelinePoint m_press;
    float m_press_time;
    float m_grabbed; ///< time of what was pressed on
    bool m_is_off = false;
};

/// The selected script keys, by one of them.
class ScriptsDrag final : public ItemsDrag {
public:
    ScriptsDrag(TimelineHost& host, const TimelinePoint& press, float grabbed)
        : ItemsDrag(host, press, grabbed, SelectionDrag::Items::Scripts)
    {
    }
    int mode() const override { return 1; }

private:
    float target(const TimelinePoint& point) override;
    void drop_off() override;
};

/// The selected keys, by one of them; the cursor follows.
class KeysDrag : public ItemsDrag {
public:
    KeysDrag(TimelineHost& host, const TimelinePoint& press, float grabbed)
        : ItemsDrag(host, press, grabbed, SelectionDrag::Items::Keys)
    {
    }
    int mode() const override { return 3; }

protected:
    float target(const TimelinePoint& point) override;
    void drop_off() override;
    void dropped(float time) override;
};

/// All that is selected, from the band that shows it as a whole: it is moved, or stretched by an end.
class SpanDrag final : public TimelineDrag {
public:
    SpanDrag(TimelineHost& host, const TimelinePoint& press);

    int mode() const override { return m_stretches ? 6 : 5; }
    void move(const TimelinePoint& point) override;
    void finish(const TimelinePoint& point) override;
    void cancel() override { m_items.restore(); }
    Qt::CursorShape cursor() const override
    {
        return m_is_off ? Qt::ForbiddenCursor : m_stretches ? Qt::SizeHorCursor : Qt::SizeAllCursor;
    }

private:
    TimelineHost& m_host;
    SelectionDrag m_items;
    TimelineSnap m_snap;
    float m_press_time;
    float m_edge;   ///< what snaps: the end that is dragged, or the begin of what is moved
    float m_anchor; ///< stays where it is while it is stretched
    bool m_stretches;
    bool m_is_off = false;
};

/// Sets the ease of a span, and of all selected ones when it is one of them.
void set_span_ease(TimelineView& view, const EaseSpan& span, float ease);

} // namespace tarn
