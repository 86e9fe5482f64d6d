#pragma once

#include "band_geometry.h"

namespace tarn {

/// A row below the bands: the timebar's, an object's or a variable's.
struct TimelineRow {
    static constexpr int height = 18;

    CTimerObject* object = nullptr; ///< null: the row of all keys of the timebar
    CTVar* variable = nullptr;      ///< null: the row of all keys of the object, or the timebar
    int top = 0;                    ///< as it is scrolled now

    bool operator==(const TimelineRow&) const = default;
    int bottom() const { return top + height; }
    int middle() const { return top + height / 2; }
    /// Those whose keys the row shows.
    std::vector<CTVar*> variables(const CTimebar& bar) const;
};

/// What there is to click in the name of a row.
enum class RowPart {
    Name,
    Fold, ///< the arrow that unfolds an object
    Lock,
    Mute, ///< the mark that takes an object out of what is shown, and back
};

struct RowHit {
    TimelineRow row;
    float key = -1; ///< the time of the key under the mouse, the last of several; -1: none
};

struct RowNameHit {
    TimelineRow row;
    RowPart part = RowPart::Name;
};

/// All rows, visible ones and others: the timebar's, then the objects' with the variables of the unfolded ones.
std::vector<TimelineRow> timeline_rows(const TimelineView& view);
/// Those that show a pixel from `top` to before `bottom`.
std::vector<TimelineRow> rows_between(const TimelineView& view, int top, int bottom);
/// Nothing above the rows, below the last one and without a timebar.
std::optional<RowHit> find_row(const TimelineView& view, int x, int y);
/// How far the rows can be scrolled.
int greatest_scroll(const TimelineView& view);

// The names of the rows stand beside the timeline, at the same heights, in a column of their own.
std::optional<RowNameHit> find_row_name(const TimelineView& view, int x, int y, int width);
/// Where the arrow of an object, its lock or its mute mark is drawn and hit in a column of that width; null for other rows.
QRect row_part(const TimelineRow& row, RowPart part, int width);

} // namespace tarn
