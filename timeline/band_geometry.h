#pragma once

#include "timeline_view.h"

#include <QRect>

#include <span>
#include <unordered_map>

namespace tarn {

// Where the timeline draws and hits what its timebar has. All is in pixels from the upper left corner.

/// The column of what stands at a time.
inline int column_of(const TimeAxis& axis, float time)
{
    return int(axis.pixel_from_time(time));
}
/// Keys, script keys and the like are under the mouse up to two pixels from their columns.
constexpr bool hits_column(int x, int column)
{
    return (x - column) * (x - column) < 5;
}

/// The keys that share a column of pixels, of any number of variables.
struct KeyStack {
    int column = 0;
    float first = 0; ///< times
    float last = 0;
    float ease = 0; ///< of the last key, and of the one after it
    float ease_after = 0;
};

struct KeyColumns {
    std::vector<KeyStack> columns; ///< ascending
    std::optional<float> before;   ///< the nearest key left of the columns that were asked for
    std::optional<float> after;    ///< and right of them
};

/// The keys of the variables in the columns from `first` to `last`. Costs what there are columns.
KeyColumns key_columns(const TimeAxis& axis, std::span<CTVar* const> variables, int first, int last);
/// The columns of variables for as long as one picture is painted: its rows and their sums find each key once.
class KnownColumns {
public:
    KnownColumns(const TimeAxis& axis, int first, int last) : m_axis(axis), m_first(first), m_last(last) {}

    /// As key_columns().
    KeyColumns of(std::span<CTVar* const> variables);

private:
    static constexpr std::size_t most_kept = 256; ///< variables; some megabytes

    const KeyColumns& of(CTVar& variable);

    TimeAxis m_axis;
    int m_first;
    int m_last;
    std::unordered_map<const CTVar*, KeyColumns> m_known;
};

/// Calls `visit(time, column)` for those of the times, which ascend, that stand in the columns, once a column: for the last.
template <class Visit>
void each_column(const TimeAxis& axis, std::span<const float> times, int first, int last, Visit&& visit)
{
    auto time = std::lower_bound(times.begin(), times.end(), first,
                                 [&](float t, int column) { return column_of(axis, t) < column; });
    while (time != times.end() && column_of(axis, *time) <= last) {
        const int column = column_of(axis, *time);
        time = std::upper_bound(time, times.end(), column,
                                [&](int wanted, float t) { return wanted < column_of(axis, t); });
        visit(*(time - 1), column);
    }
}

/// The box of the ease handle of a span between two keys, and the way on which it can be dragged.
struct EaseHandle {
    static constexpr float inset = 6;     ///< of the way's ends from the keys
    static constexpr int least_span = 30; ///< a narrower span has no handle
    static constexpr int half_width = 3;

    EaseSpan span;
    float left = 0; ///< where the handle is at -100
    float right = 0;

    float middle() const { return (left + right) / 2; }
    float x() const { return middle() + (right - left) * span.ease / 200; }
    /// The ease whose handle is at `x`.
    float ease_at(float x) const;
    bool contains(float mouse_x) const { return mouse_x >= x() - half_width && mouse_x <= x() + half_width; }
};

EaseHandle ease_handle(const TimeAxis& axis, const EaseSpan& span);
/// Those of the visible spans of the current variable or else the current object, in the order of time.
std::vector<EaseHandle> ease_handles(const TimelineView& view);

/// The box of a time label at the column: `text_width` and a margin wide, centred unless it would pass an edge.
QRect label_box(int column, int text_width, int client_width);
/// The box of the end of the timebar.
QRect end_box(const TimelineView& view, const CTimebar& bar);
/// The band from the first to the last selected key or script key; null when nothing is selected.
QRect span_box(const TimelineView& view);
/// The selected range, its last column included; null when there is none.
QRect range_box(const TimelineView& view);

} // namespace tarn
