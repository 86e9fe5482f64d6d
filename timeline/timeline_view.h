#pragma once

#include "time_axis.h"
#include "timeline_selection.h"

#include <QRect>

#include <optional>
#include <set>

class CAnimationScene;
class CTimerObject;
class CTVar;

namespace tarn {

/// The parts of the timeline by their distance in pixels from its top. Painting, hitting and what is drawn anew go by them.
namespace bands {
constexpr int label_top = 2; ///< the box with the cursor's time
constexpr int label_bottom = 18;
constexpr int faults_bottom = 8; ///< of their ticks, which begin at the top
constexpr int keys_top = 9;      ///< marks of keys, of the section's ends and of markers
constexpr int keys_bottom = 20;
constexpr int span_top = 11; ///< what is selected, as a whole
constexpr int span_bottom = 21;
constexpr int end_top = 22; ///< the end of the timebar
constexpr int end_bottom = 40;
constexpr int end_width = 18;
constexpr int scripts_top = 43;
constexpr int scripts_bottom = 63;
constexpr int ease_top = 48; ///< boxes of the ease handles
constexpr int ease_bottom = 54;
constexpr int cursor_bottom = 64;
constexpr int rows_top = 80;
} // namespace bands

/// Two keys that follow each other, and the ease between them.
struct EaseSpan {
    CTVar* variable = nullptr;      ///< whose keys they are; null: the object's keys
    CTimerObject* object = nullptr; ///< that the variable belongs to
    float begin = 0;
    float end = 0;
    float ease = 0;
};

/// What is under the mouse. Times are -1 where there is nothing of the kind.
struct TimelineHover {
    float key = -1;
    float script = -1;
    float point = -1; ///< an end of the selected section
    float extra = -1; ///< a marker, in the band of the keys
    float other = -1; ///< the end of a marker that has a length, in the band of the script keys
    bool end_mark = false;
    std::optional<EaseSpan> ease;

    bool operator==(const TimelineHover& other_hover) const
    {
        return key == other_hover.key && script == other_hover.script && point == other_hover.point
            && extra == other_hover.extra && other == other_hover.other && end_mark == other_hover.end_mark
            && ease.has_value() == other_hover.ease.has_value()
            && (!ease || (ease->begin == other_hover.ease->begin && ease->end == other_hover.ease->end));
    }
};

/// Something that does not look as it is meant, at a time of the timebar.
struct TimeFault {
    float time = 0; ///< seconds
    QString text;
    bool operator==(const TimeFault&) const = default;
};

/// How the rows below the bands are shown, of timer objects by their ids. Not saved.
struct TimelineRowsView {
    int scroll = 0;         ///< pixels, from 0
    std::set<quint32> open; ///< unfolded into their variables
    QString filter;         ///< only objects whose names contain it
    bool only_selected = false;
    std::set<quint32> locked; ///< their keys are not edited
    // The row that the keyboard is in: an object's, or one of its variables'; without both the timebar's.
    quint32 focus_object = 0;
    quint32 focus_variable = 0;
    QRect box; ///< that is being drawn around keys; null for none

    bool operator==(const TimelineRowsView&) const = default;
};

/// All that the timeline's painting and hitting go by, apart from the timebar itself. It knows no widget.
struct TimelineView {
    CAnimationScene* scene = nullptr;
    TimeAxis axis;
    float current_time = 0;
    int client_width = 0;
    int client_height = 0;
    bool ripple = false;       ///< later keys follow those that are moved
    bool range_select = false; ///< a range is being selected, or was and still is
    float range_anchor = 0;    ///< where it begins; it ends at the cursor
    TimelineSelection selection;
    TimelineHover hover;
    TimelineRowsView rows;
    std::vector<TimeFault> faults; ///< of the timebar, as they were found last; ascending in time

    CTimebar* bar() const; ///< the current one; null for none
    // Of the selected range, the smaller first.
    float range_begin() const { return std::min(range_anchor, current_time); }
    float range_end() const { return std::max(range_anchor, current_time); }
};

} // namespace tarn
