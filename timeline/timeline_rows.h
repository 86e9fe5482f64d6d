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

enum class RowPart {
    Body,
    Fold, ///< the arrow that unfolds an object
    Lock,
};

struct RowHit {
    TimelineRow row;
    RowPart part = RowPart::Body;
    float key = -1; ///< the time of the key under the mouse, the last of several; -1: none
};

/// All rows, visible ones and others: the timebar's, then the objects' with the variables of the unfolded ones.
std::vector<TimelineRow> timeline_rows(const TimelineView& view);
/// Those that show a pixel from `top` to before `bottom`.
std::vector<TimelineRow> rows_between(const TimelineView& view, int top, int bottom);
/// Nothing above the rows, below the last one and without a timebar.
std::optional<RowHit> find_row(const TimelineView& view, int x, int y);
/// How far the rows can be scrolled.
int greatest_scroll(const TimelineView& view);
/// The part of a row that an object's arrow, or its lock, is drawn in and hit in.
QRect row_part(const TimelineView& view, const TimelineRow& row, RowPart part);

} // namespace tarn
