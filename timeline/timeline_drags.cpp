// What drags of the left button do in the bands of the timeline, and which of them a press begins.

#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "band_geometry.h"
#include "core/language.h"
#include "frame/boxes.h"
#include "item_drags.h"
#include "timeline_drag.h"
#include "timeline_edits.h"
#include "timeline_hits.h"
#include "timeline_host.h"
#include "timeline_snap.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

float time_at(TimelineHost& host, const TimelinePoint& point)
{
    return host.timeline().axis.time_from_pixel(float(point.x));
}

/// The cursor follows the mouse.
class ScrubDrag : public TimelineDrag {
public:
    explicit ScrubDrag(TimelineHost& host)
        : m_host(host), m_snap(host.timeline()), m_time_at_press(host.timeline().current_time)
    {
    }
    int mode() const override { return -1; }
    bool is_immediate() const override { return true; }
    void move(const TimelinePoint& point) override
    {
        m_host.set_current_time(m_snap(time_at(m_host, point), point.modifiers));
    }
    void finish(const TimelinePoint&) override {}
    void cancel() override { m_host.set_current_time(m_time_at_press); }

protected:
    TimelineHost& m_host;

private:
    TimelineSnap m_snap;
    float m_time_at_press;
};

/// A range from where the cursor stands to where the mouse takes it.
class RangeDrag final : public ScrubDrag {
public:
    explicit RangeDrag(TimelineHost& host) : ScrubDrag(host)
    {
        TimelineView& view = host.timeline();
        m_was_selected = view.range_select;
        m_anchor_before = view.range_anchor;
        view.range_anchor = view.current_time;
        view.range_select = true;
    }
    void finish(const TimelinePoint&) override { select_range(m_host.timeline()); }
    void cancel() override
    {
        ScrubDrag::cancel();
        m_host.timeline().range_select = m_was_selected;
        m_host.timeline().range_anchor = m_anchor_before;
    }

private:
    bool m_was_selected;
    float m_anchor_before;
};

/// An end of the selected range.
class PointDrag final : public TimelineDrag {
public:
    PointDrag(TimelineHost& host, float point)
        : m_host(host),
          m_snap(host.timeline()),
          m_anchor(host.timeline().range_anchor),
          m_time(host.timeline().current_time),
          m_moves_anchor(point == m_anchor && point != m_time)
    {
    }
    int mode() const override { return 2; }
    void move(const TimelinePoint& point) override
    {
        const float time = m_snap(time_at(m_host, point), point.modifiers);
        if (!m_moves_anchor) {
            m_host.set_current_time(time);
            return;
        }
        const CTimebar* bar = m_host.timeline().bar();
        m_host.timeline().range_anchor = bar ? std::min(time, bar->get_total_length()) : time;
    }
    void finish(const TimelinePoint&) override { select_range(m_host.timeline()); }
    void cancel() override
    {
        m_host.timeline().range_anchor = m_anchor;
        if (!m_moves_anchor)
            m_host.set_current_time(m_time);
    }
    Qt::CursorShape cursor() const override { return Qt::SizeAllCursor; }

private:
    TimelineHost& m_host;
    TimelineSnap m_snap;
    float m_anchor;
    float m_time;
    bool m_moves_anchor;
};

/// One step of undo from the first change on.
class StepDrag : public TimelineDrag {
public:
    StepDrag(TimelineHost& host, CTimebar& bar, const QString& name)
        : m_host(host), m_snap(host.timeline()), m_bar(bar), m_name(name)
    {
    }
    void finish(const TimelinePoint&) override { m_action.reset(); }
    void cancel() override
    {
        if (m_action)
            m_bar.journal().cancel();
        m_action.reset();
    }
    Qt::CursorShape cursor() const override { return Qt::SizeHorCursor; }

protected:
    void begin_step()
    {
        if (!m_action)
            m_action.emplace(m_bar.journal(), m_name);
    }
    TimelineHost& m_host;
    TimelineSnap m_snap;
    CTimebar& m_bar;

private:
    QString m_name;
    std::optional<UserAction> m_action;
};

/// A mark, or the end of one that has a length.
class MarkDrag final : public StepDrag {
public:
    MarkDrag(TimelineHost& host, CTimebar& bar, CTimeMark& mark, const TimelinePoint& press, bool moves_end)
        : StepDrag(host, bar, lang(u"移动标记", u"Move Mark")),
          m_mark(mark),
          m_time(mark.time()),
          m_length(mark.length()),
          m_press_time(time_at(host, press)),
          m_moves_end(moves_end)
    {
    }
    int mode() const override { return 4; }
    void move(const TimelinePoint& point) override
    {
        begin_step();
        const float moved = m_moves_end ? m_time + m_length : m_time;
        float offset = m_snap.offset(moved, time_at(m_host, point) - m_press_time, point.modifiers);
        offset = std::min(offset, m_bar.get_total_length() - moved);
        if (m_moves_end)
            m_mark.set_span(m_time, std::max(m_length + offset, 0.f));
        else
            m_mark.set_span(std::max(m_time + offset, 0.f), m_length);
        if (is_off_timeline(m_host.timeline(), point.y))
            m_host.say(lang(u"松开以删除", u"Let go to delete"));
    }
    void finish(const TimelinePoint& point) override
    {
        if (!is_off_timeline(m_host.timeline(), point.y)) {
            StepDrag::finish(point);
            return;
        }
        cancel();
        if (boxes::confirm(m_host.owner(), lang(u"是否删除标记？", u"Delete the mark?")))
            m_bar.remove_mark(&m_mark);
    }

private:
    CTimeMark& m_mark;
    float m_time;
    float m_length;
    float m_press_time;
    bool m_moves_end;
};

/// The end of the timebar.
class EndDrag final : public StepDrag {
public:
    EndDrag(TimelineHost& host, CTimebar& bar) : StepDrag(host, bar, lang(u"总时间", u"Total Length")) {}
    int mode() const override { return 7; }
    void move(const TimelinePoint& point) override
    {
        begin_step();
        m_bar.set_total_length(m_snap(time_at(m_host, point), point.modifiers));
        if (m_host.timeline().current_time > m_bar.get_total_length())
            m_host.set_current_time(m_bar.get_total_length());
    }
};

/// The ease between two keys; of all selected spans when it is one of them.
class EaseDrag final : public StepDrag {
public:
    EaseDrag(TimelineHost& host, CTimebar& bar, const EaseSpan& span)
        : StepDrag(host, bar, lang(u"松紧值", u"Ease")), m_span(span)
    {
    }
    int mode() const override { return 8; }
    void move(const TimelinePoint& point) override
    {
        begin_step();
        const float ease = ease_handle(m_host.timeline().axis, m_span).ease_at(float(point.x));
        set_span_ease(m_host.timeline(), m_span, ease);
        if (m_host.timeline().hover.ease)
            m_host.timeline().hover.ease->ease = ease;
    }

private:
    EaseSpan m_span;
};

CTimeMark* mark_until(const CTimebar& bar, float end)
{
    CTimeMark* found = nullptr;
    for (CTimeMark* mark : bar.marks())
        if (mark->length() > 0 && mark->end() == end)
            found = mark;
    return found;
}

/// What a press on a script key or key of the bands selects. One that is alone makes room for another; Shift keeps what is
/// selected.
void select_script(TimelineView& view, float time, bool keeps)
{
    TimelineSelection& selection = view.selection;
    const bool is_alone = selection.scripts().size() == 1 && selection.keys().empty();
    if (!keeps && (selection.scripts().empty() || is_alone || !selection.has_script(time)))
        selection.clear();
    selection.add_script(time);
}

void select_keys(TimelineView& view, float time, bool keeps)
{
    TimelineSelection& selection = view.selection;
    const bool is_alone = selection.key_count() == 1 && selection.scripts().empty();
    if (!keeps && (selection.keys().empty() || is_alone || !selection.has_key_at(time)))
        selection.clear();
    if (selection.has_key_at(time))
        return;
    for (CTVar* variable : view.bar()->shown_variables())
        if (variable->keys().find(time) >= 0)
            selection.add_key(variable, time);
}

} // namespace

void set_span_ease(TimelineView& view, const EaseSpan& span, float ease)
{
    const TimelineSelection& selection = view.selection;
    const bool is_selected = span.variable ? selection.has_key(span.variable, span.end)
                                           : selection.has_key_at(span.end);
    const UserAction action(view.bar()->journal(), lang(u"松紧值", u"Ease"));
    if (is_selected)
        view.bar()->set_keys_ease(selection.keys(), ease);
    if (span.variable)
        span.variable->set_key_ease(span.end, ease);
    else if (span.object)
        span.object->set_key_ease(span.end, ease);
}

std::unique_ptr<TimelineDrag> press_bands(TimelineHost& host, const TimelinePoint& point)
{
    TimelineView& view = host.timeline();
    CTimebar* bar = view.bar();
    const bool shift = point.modifiers.testFlag(Qt::ShiftModifier);
    if (shift && point.y < bands::span_bottom)
        return std::make_unique<RangeDrag>(host);
    if (!shift && view.hover.point < 0)
        view.range_select = false;
    view.selection.refresh(bar);
    if (!bar) {
        auto drag = std::make_unique<ScrubDrag>(host);
        drag->move(point);
        return drag;
    }
    if (const auto faults = faults_at(view, point.x, point.y); !faults.empty()) {
        host.set_current_time(faults.front().time);
        return nullptr;
    }
    if (hits_span(view, point.x, point.y)) {
        view.hover = {};
        return std::make_unique<SpanDrag>(host, point);
    }
    if (hits_end(view, point.x, point.y))
        return std::make_unique<EndDrag>(host, *bar);
    const TimelineHover hover = view.hover;
    if (hover.script >= 0) {
        select_script(view, hover.script, shift);
        host.set_current_time(hover.script);
        return std::make_unique<ScriptsDrag>(host, point, hover.script);
    }
    if (hover.key >= 0) {
        select_keys(view, hover.key, shift);
        host.set_current_time(hover.key);
        return std::make_unique<KeysDrag>(host, point, hover.key);
    }
    if (CTimeMark* mark = bar->mark_at(hover.extra))
        return std::make_unique<MarkDrag>(host, *bar, *mark, point, false);
    if (hover.point >= 0)
        return std::make_unique<PointDrag>(host, hover.point);
    if (CTimeMark* mark = mark_until(*bar, hover.other))
        return std::make_unique<MarkDrag>(host, *bar, *mark, point, true);
    if (hover.ease)
        return std::make_unique<EaseDrag>(host, *bar, *hover.ease);
    auto drag = std::make_unique<ScrubDrag>(host);
    drag->move(point);
    return drag;
}

} // namespace tarn
