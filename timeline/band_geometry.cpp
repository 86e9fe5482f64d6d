#include "band_geometry.h"

#include "animation/anim_time.h"
#include "animation/ease.h"
#include "animation/t_var.h"
#include "animation/timer_object.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tarn {

namespace {

/// Finds the keys of a track in a range of columns.
class ColumnSearch {
public:
    ColumnSearch(const TimeAxis& axis, int first, int last) : m_axis(axis), m_first(first), m_last(last) {}

    /// Calls `add(column, run)` for the keys in the columns.
    template <class Add>
    void visit(const KeyTrack& keys, KeyColumns& found, Add&& add) const
    {
        // Two columns more on each side: times are rounded.
        const float from = m_axis.view_origin + m_axis.seconds(float(m_first - 2));
        const float to = m_axis.view_origin + m_axis.seconds(float(m_last + 2));
        const auto before = [&](float time) { found.before = std::max(found.before.value_or(time), time); };
        const auto after = [&](float time) { found.after = std::min(found.after.value_or(time), time); };
        if (const qsizetype key = keys.first_from(from) - 1; key >= 0)
            before(keys.time(key));
        keys.each_run(
            from, to, [this](float time) { return column_of(m_axis, time); },
            [this](int column) { return m_axis.view_origin + m_axis.seconds(float(column + 1)); },
            [&](int column, const KeyRun& run) {
                if (column < m_first)
                    before(run.last);
                else if (column > m_last)
                    after(run.first);
                else
                    add(column, run);
            });
        if (const qsizetype key = keys.first_from(std::nextafter(to, max_time)); key < keys.size())
            after(keys.time(key));
    }

private:
    const TimeAxis& m_axis;
    int m_first;
    int m_last;
};

template <class Keys>
KeyStack stack_of(int column, const Keys& run)
{
    return {column, run.first, run.last, run.ease, run.ease_after};
}

/// With a run, or another stack of the column.
template <class Keys>
void join(KeyStack& stack, const Keys& run)
{
    stack.first = std::min(stack.first, run.first);
    if (run.last > stack.last) {
        stack.last = run.last;
        stack.ease = run.ease;
        stack.ease_after = run.ease_after;
    }
}

/// A place for each column, so that the variables can come one after the other.
class ColumnSum {
public:
    ColumnSum(int first, int last)
        : m_first(first), m_places(std::size_t(std::max(last - first + 1, 0)), KeyStack{0, 0, never, 0, 0})
    {
    }

    template <class Keys>
    void add(int column, const Keys& keys)
    {
        KeyStack& place = m_places[std::size_t(column - m_first)];
        if (place.last == never)
            place = stack_of(column, keys);
        else
            join(place, keys);
    }
    std::vector<KeyStack> columns() const
    {
        std::vector<KeyStack> filled;
        std::copy_if(m_places.begin(), m_places.end(), std::back_inserter(filled),
                     [](const KeyStack& place) { return place.last != never; });
        return filled;
    }

private:
    static constexpr float never = -1;

    int m_first;
    std::vector<KeyStack> m_places;
};

} // namespace

KeyColumns key_columns(const TimeAxis& axis, std::span<CTVar* const> variables, int first, int last)
{
    KeyColumns found;
    const ColumnSearch search(axis, first, last);
    if (variables.size() == 1) {
        search.visit(variables.front()->keys(), found, [&](int column, const KeyRun& run) {
            if (!found.columns.empty() && found.columns.back().column == column)
                join(found.columns.back(), run);
            else
                found.columns.push_back(stack_of(column, run));
        });
        return found;
    }
    ColumnSum sum(first, last);
    for (const CTVar* variable : variables)
        search.visit(variable->keys(), found, [&](int column, const KeyRun& run) { sum.add(column, run); });
    found.columns = sum.columns();
    return found;
}

const KeyColumns& KnownColumns::of(CTVar& variable)
{
    const auto known = m_known.find(&variable);
    if (known != m_known.end())
        return known->second;
    CTVar* one = &variable;
    return m_known.emplace(&variable, key_columns(m_axis, {&one, 1}, m_first, m_last)).first->second;
}

KeyColumns KnownColumns::of(std::span<CTVar* const> variables)
{
    if (m_known.size() + variables.size() > most_kept)
        return key_columns(m_axis, variables, m_first, m_last);
    if (variables.size() == 1)
        return of(*variables.front());
    KeyColumns found;
    ColumnSum sum(m_first, m_last);
    for (CTVar* variable : variables) {
        const KeyColumns& one = of(*variable);
        for (const KeyStack& stack : one.columns)
            sum.add(stack.column, stack);
        if (one.before)
            found.before = std::max(found.before.value_or(*one.before), *one.before);
        if (one.after)
            found.after = std::min(found.after.value_or(*one.after), *one.after);
    }
    found.columns = sum.columns();
    return found;
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
