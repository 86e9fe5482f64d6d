#pragma once

#include "device_painter.h"
#include "driven_conflicts.h"
#include "key_stamps.h"
#include "timeline_colors.h"
#include "timeline_rows.h"

namespace tarn {

/// Keeps what drawing prepares for a font, colours and a scale of the screen.
struct TimelineLook {
    TimelineLook(const QPalette& palette, const QFont& used_font, double used_ratio)
        : colors(palette), font(used_font), ratio(used_ratio), key_stamps(11, ratio), small_stamps(9, ratio)
    {
    }

    TimelineColors colors;
    QFont font;
    double ratio;
    KeyStamps key_stamps;   ///< of the bands and of objects
    KeyStamps small_stamps; ///< of variables
    // While one picture is painted, from the bands on
    std::optional<KnownColumns> columns;
    std::optional<KeyColumns> all_keys; ///< of the whole timebar, where the bands had to find them
};

/// Draws the bands: all but what paint_overlay() draws.
void paint_bands(DevicePainter& painter, TimelineLook& look, const TimelineView& view);
/// Draws the visible rows below them, after the bands of the same picture.
void paint_rows(DevicePainter& painter, TimelineLook& look, const TimelineView& view);
/// Draws their names into a column of that width beside the timeline, at the timeline's heights.
void paint_row_names(DevicePainter& painter, const TimelineColors& colors, const TimelineView& view, int width);
/// Draws what moves often over the rest: what is under the mouse, the range being selected and, last, the cursor.
void paint_overlay(DevicePainter& painter, const TimelineLook& look, const TimelineView& view);
/// Where paint_overlay() draws, each part by itself.
std::vector<QRect> overlay_boxes(const DevicePainter& painter, const TimelineView& view);

/// The columns of `columns` in which a key of one of the variables is selected.
std::vector<KeyStack> selected_columns(const TimelineView& view, const std::vector<CTVar*>& variables,
                                       const std::vector<KeyStack>& columns);
/// Bars where the variable has one value from key to key.
void paint_held_spans(DevicePainter& painter, const TimelineColors& colors, const CTVar& variable,
                      const std::vector<KeyStack>& columns, int middle);

} // namespace tarn
