// What the left button does in the rows of the timeline.

#include "item_drags.h"
#include "timeline_edits.h"
#include "timeline_host.h"
#include "timeline_row_keys.h"
#include "timeline_rows.h"

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "engine/base_world.h"

#include <algorithm>

namespace tarn {

namespace {

/// A press that did all it does.
class NoDrag final : public TimelineDrag {
public:
    int mode() const override { return -1; }
    void move(const TimelinePoint&) override {}
    void finish(const TimelinePoint&) override {}
    void cancel() override {}
};

/// The selected keys, from a row. A click on one of several selects it alone.
class RowKeysDrag final : public KeysDrag {
public:
    RowKeysDrag(TimelineHost& host, const TimelinePoint& press, const RowHit& hit, bool selects_alone)
        : KeysDrag(host, press, hit.key), m_hit(hit), m_selects_alone(selects_alone)
    {
    }
    void click(const TimelinePoint&) override
    {
        TimelineView& view = m_host.timeline();
        if (m_selects_alone && view.bar())
            view.selection.set_keys(keys_at(view, m_hit.row, m_hit.key));
    }

private:
    RowHit m_hit;
    bool m_selects_alone;
};

/// A frame around keys, across rows. Shift adds them to what is selected, Ctrl takes out what is selected already.
class BoxDrag final : public TimelineDrag {
public:
    BoxDrag(TimelineHost& host, const TimelinePoint& press, std::optional<TimelineRow> row)
        : m_host(host),
          m_before(host.timeline().selection),
          m_press(press),
          m_row(row),
          m_scroll(host.timeline().rows.scroll),
          m_begin(host.timeline().axis.time_from_pixel(float(press.x)))
    {
    }
    int mode() const override { return -1; }
    void move(const TimelinePoint& point) override
    {
        TimelineView& view = m_host.timeline();
        // The frame begins where the press was, though the view was scrolled since.
        const int begin_x = int(view.axis.pixel_from_time(m_begin));
        const int begin_y = m_press.y + m_scroll - view.rows.scroll;
        view.rows.box = QRect(QPoint(begin_x, begin_y), QPoint(point.x, point.y)).normalized();
        const KeySelection inside = keys_between(view, view.rows.box.top(), view.rows.box.bottom(),
                                                 view.axis.time_from_pixel(float(view.rows.box.left())),
                                                 view.axis.time_from_pixel(float(view.rows.box.right())));
        view.selection = m_before;
        combine(view.selection, inside, m_press.modifiers);
    }
    void finish(const TimelinePoint& point) override
    {
        move(point);
        m_host.timeline().rows.box = {};
    }
    void click(const TimelinePoint&) override
    {
        TimelineView& view = m_host.timeline();
        if (!(m_press.modifiers & (Qt::ShiftModifier | Qt::ControlModifier)))
            view.selection.clear();
        if (m_row)
            make_current(m_host, *m_row);
    }
    void cancel() override
    {
        m_host.timeline().rows.box = {};
        m_host.timeline().selection = m_before;
    }
    bool takes_cursor_along() const override { return false; }

private:
    TimelineHost& m_host;
    TimelineSelection m_before;
    TimelinePoint m_press;
    std::optional<TimelineRow> m_row; ///< under the press
    int m_scroll;
    float m_begin;
};

void toggle(std::set<quint32>& set, quint32 id)
{
    if (!set.erase(id))
        set.insert(id);
}

} // namespace

void press_row_name(TimelineHost& host, const RowNameHit& hit)
{
    TimelineView& view = host.timeline();
    focus_row(view, hit.row);
    const quint32 object = hit.row.object ? hit.row.object->id() : 0;
    switch (hit.part) {
    case RowPart::Name: make_current(host, hit.row); break;
    case RowPart::Fold: toggle(view.rows.open, object); break;
    case RowPart::Lock: toggle(view.rows.locked, object); break;
    case RowPart::Mute: view.scene->set_muted(object, !view.scene->is_muted(object)); break;
    }
    host.redraw_all();
}

std::unique_ptr<TimelineDrag> press_rows(TimelineHost& host, const TimelinePoint& point)
{
    TimelineView& view = host.timeline();
    view.selection.refresh(view.bar());
    const auto hit = find_row(view, point.x, point.y);
    if (!hit)
        return std::make_unique<BoxDrag>(host, point, std::nullopt);
    focus_row(view, hit->row);
    const KeySelection keys = hit->key >= 0 ? keys_at(view, hit->row, hit->key) : KeySelection();
    if (keys.empty())
        return std::make_unique<BoxDrag>(host, point, hit->row);
    const bool extends = point.modifiers & (Qt::ShiftModifier | Qt::ControlModifier);
    const bool was_selected = holds_all(view.selection, keys);
    if (extends || !was_selected)
        combine(view.selection, keys, point.modifiers);
    if (extends && !holds_all(view.selection, keys))
        return std::make_unique<NoDrag>();
    // What is pasted or recorded next belongs where the author works.
    if (!extends && hit->row.object && hit->row.object != view.bar()->current_object())
        make_current(host, hit->row);
    host.set_current_time(hit->key);
    return std::make_unique<RowKeysDrag>(host, point, *hit, was_selected && !extends);
}

} // namespace tarn
