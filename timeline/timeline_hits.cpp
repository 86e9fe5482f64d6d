#include "timeline_hits.h"

#include "animation/timebar.h"
#include "band_geometry.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tarn {

namespace {

constexpr int reach = 2;       // pixels
constexpr int fault_reach = 4; // of a tick

bool hits_end_column(const TimelineView& view, int x)
{
    const CTimebar* bar = view.bar();
    const int column = bar ? end_box(view, *bar).left() : 0;
    return bar && x >= column && x <= column + bands::end_width;
}

void hover_keys(const TimelineView& view, const CTimebar& bar, int x, TimelineHover& hover)
{
    const KeyColumns keys = key_columns(view.axis, bar.shown_variables(), x - reach, x + reach);
    if (!keys.columns.empty())
        hover.key = keys.columns.back().last;
    for (const CTimeMark* mark : bar.marks())
        if (hits_column(x, column_of(view.axis, mark->time())))
            hover.extra = mark->time();
}

void hover_scripts(const TimelineView& view, const CTimebar& bar, int x, TimelineHover& hover)
{
    each_column(view.axis, bar.script_key_times(), x - reach, x + reach, [&](float time, int) { hover.script = time; });
    for (const CTimeMark* mark : bar.marks())
        if (mark->length() > 0 && hits_column(x, column_of(view.axis, mark->end())))
            hover.other = mark->end();
}

} // namespace

TimelineHover find_hover(const TimelineView& view, int x, int y)
{
    TimelineHover hover;
    const CTimebar* bar = view.bar();
    if (y >= bands::keys_top && y <= bands::keys_bottom) {
        if (bar)
            hover_keys(view, *bar, x, hover);
        if (view.range_select)
            for (const float point : {view.range_begin(), view.range_end()})
                if (hits_column(x, column_of(view.axis, point)))
                    hover.point = point;
    }
    if (bar && y >= bands::scripts_top && y <= bands::scripts_bottom)
        hover_scripts(view, *bar, x, hover);
    hover.end_mark = y >= bands::end_top && y < bands::end_bottom && hits_end_column(view, x);
    if (y >= bands::ease_top - 1 && y < bands::ease_bottom + 2)
        for (const EaseHandle& handle : ease_handles(view))
            if (!hover.ease && handle.contains(float(x)))
                hover.ease = handle.span;
    return hover;
}

std::vector<TimeFault> faults_at(const TimelineView& view, int x, int y)
{
    std::vector<TimeFault> found;
    if (view.bar() && y < bands::keys_top)
        std::copy_if(view.faults.begin(), view.faults.end(), std::back_inserter(found), [&](const TimeFault& fault) {
            return std::abs(x - column_of(view.axis, fault.time)) <= fault_reach;
        });
    return found;
}

bool hits_span(const TimelineView& view, int x, int y)
{
    const QRect box = span_box(view);
    return !box.isNull() && y >= bands::span_top && y <= bands::span_bottom && x >= box.left() - reach
        && x <= box.right() + reach;
}

bool hits_end(const TimelineView& view, int x, int y)
{
    return y >= bands::end_top && y < bands::end_bottom && hits_end_column(view, x);
}

} // namespace tarn
