#include "band_geometry.h"

#include "animation/anim_time.h"
#include "animation/ease.h"
#include "animation/t_var.h"
#include "animation/timer_object.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarn {

namespace {

/// A column for each place, so that variables can come one after the other.
class ColumnTable {
public:
    ColumnTable(const TimeAxis& axis, int first, int last)
        : m_axis(axis), m_first(first), m_columns(std::size_t(std::max(last - first + 1, 0)))
    {
        for (KeyStack& column : m_columns)
            column.first = never;
    }

    void add(const KeyTrack& keys)
    {
        // A column more on each side: times are rounded.
        const float from = m_axis.view_origin + m_axis.seconds(float(m_first - 2));
        const float to = m_axis.view_origin + m_axis.seconds(float(m_first) + float(m_columns.size()) + 1);
        if (const qsizetype key = keys.first_from(from) - 1; key >= 0)
            add_before(keys.time(key));
        keys.each_run(
            from, to, [this](float time) { return column_of(m_axis, time); },
            [this](int column, const KeyRun& run) { add(column, run); });
        if (const qsizetype key = keys.first_from(std::nextafter(to, max_time)); key < keys.size())
            add_after(keys.time(key));
    }

    KeyColumns take()
    {
        std::erase_if(m_columns, [](const KeyStack& column) { return column.first > column.last; });
        m_found.columns = std::move(m_columns);
        return std::move(m_found);
    }

private:
    static constexpr float never = std::numeric_limits<float>::max();

    void add_before(float time) { m_found.before = std::max(m_found.before.value_or(time), time); }
    void add_after(float time) { m_found.after = std::min(m_found.after.value_or(time), time); }
    void add(int column, const KeyRun& run)
    {
        if (column < m_first)
            return add_before(run.last);
        if (column >= m_first + int(m_columns.size()))
            return add_after(run.first);
        KeyStack& place = m_columns[std::size_t(column - m_first)];
        if (place.first > place.last)
            place = {column, run.first, run.last, run.ease, run.ease_after};
        place.first = std::min(place.first, run.first);
        if (run.last > place.last) {
            place.last = run.last;
            place.ease = run.ease;
            place.ease_after = run.ease_after;
        }
    }

    const TimeAxis& m_axis;
    int m_first;
    std::vector<KeyStack> m_columns;
    KeyColumns m_found;
};

} // namespace

KeyColumns key_columns(const TimeAxis& axis, std::span<CTVar* const> variables, int first, int last)
{
    ColumnTable table(axis, first, last);
    for (const CTVar* variable : variables)
        table.add(variable->keys());
    return table.take();
}

float EaseHandle::ease_at(float x) const
{
    return std::clamp(200 * (x - middle()) / (right - left), -Ease::limit, Ease::limit);
}

EaseHandle ease_handle(const TimeAxis& axis, const EaseSpan& span)
{
    return {span, axis.pixel_from_time(span.begin) + EaseHandle::inset,
            axis.pixel_from_time(span.end) - EaseHandle::inset};
}

std::vector<EaseHandle> ease_handles(const TimelineView& view)
{
    std::vector<EaseHandle> handles;
    const CTimebar* bar = view.bar();
    CTimerObject* object = bar ? bar->current_object() : nullptr;
    if (!object)
        return handles;
    CTVar* variable = object->current_variable();
    const KeyColumns keys = key_columns(view.axis, bar->shown_variables(), 0, view.client_width);
    const auto add = [&](float begin, float end) {
        if (view.axis.pixel_from_time(end) - view.axis.pixel_from_time(begin) < EaseHandle::least_span)
            return;
        const float ease = variable ? variable->get_ease(end) : object->get_ease(end);
        handles.push_back(ease_handle(view.axis, {variable, object, begin, end, ease}));
    };
    std::optional<float> previous = keys.before;
    for (const KeyStack& column : keys.columns) {
        if (previous)
            add(*previous, column.first);
        previous = column.last;
    }
    if (previous && keys.after)
        add(*previous, *keys.after);
    return handles;
}

QRect label_box(int column, int text_width, int client_width)
{
    constexpr int margin = 3;
    const int width = text_width + 2 * margin;
    int left = column - width / 2;
    if (left < 0)
        left = 1;
    if (left + width > client_width)
        left = client_width - 1 - width;
    return {left, bands::label_top, width, bands::label_bottom - bands::label_top};
}

QRect end_box(const TimelineView& view, const CTimebar& bar)
{
    return {column_of(view.axis, bar.get_total_length()), bands::end_top, bands::end_width,
            bands::end_bottom - bands::end_top};
}

QRect span_box(const TimelineView& view)
{
    if (view.selection.is_empty())
        return {};
    const int left = column_of(view.axis, view.selection.section_start());
    const int right = column_of(view.axis, view.selection.section_end());
    return {left, bands::span_top, right - left + 1, bands::span_bottom - bands::span_top};
}

QRect range_box(const TimelineView& view)
{
    constexpr int top = 22;
    if (!view.range_select)
        return {};
    const int left = column_of(view.axis, view.range_begin());
    const int right = column_of(view.axis, view.range_end());
    return {left, top, right - left + 1, bands::cursor_bottom - top};
}

} // namespace tarn
