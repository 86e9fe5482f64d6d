#pragma once

#include "timeline_drag.h"
#include "timeline_rows.h"

#include <span>

namespace tarn {

/// Where a command was called for, and what is there.
struct TimelinePlace {
    TimelineHost& host;
    TimelineView& view;
    CTimebar* bar;               ///< null for none
    TimelineHover hover;         ///< in the bands
    float time = 0;              ///< under the mouse
    std::optional<RowHit> row{}; ///< below the bands
};

/// A command of a menu; without a caption, a line between others.
struct TimelineCommand {
    int id = 0;
    const char16_t* chinese = nullptr;
    const char16_t* english = nullptr;
    bool (*is_enabled)(const TimelinePlace&) = nullptr; ///< null: where there is a timebar
    void (*run)(TimelinePlace&) = nullptr;
    bool (*is_checked)(const TimelinePlace&) = nullptr; ///< null: never
};

/// Shows the menu at the mouse and does what was chosen.
void pop_commands(TimelinePlace& place, std::span<const TimelineCommand> commands);
/// The menu of the bands.
void pop_band_menu(TimelineHost& host, const TimelinePoint& point);
/// What a double click in the bands does: it asks for the value of a key or the ease of a span, or opens a script.
void double_click_bands(TimelineHost& host, const TimelinePoint& point);

/// The menu of the rows, at the mouse, or for the row that the keyboard is in.
void pop_row_menu(TimelineHost& host, const TimelinePoint& point);
void pop_row_menu(TimelineHost& host);
/// Asks for the value of a key, makes one of a variable, or folds an object.
void double_click_rows(TimelineHost& host, const TimelinePoint& point);

// Commands that double clicks, keys and the rows share.
/// Asks for the value of the key of a variable and stores it.
void ask_key_value(TimelineHost& host, CTVar& variable, float time, const QString& prompt);
/// Opens the dialog for what an object of the world has at the time of a key, together with the other selected keys of such
/// objects. False where there is no such dialog.
bool open_key_dialog(TimelineHost& host, CTimerObject& object, float time);
void ask_ease(TimelineHost& host, const EaseSpan& span);
/// Opens the function of the script key there in the script editor.
void edit_script(TimelineHost& host, float time);
/// Keys of the selected objects at the cursor.
void record_keys(TimelineHost& host);

} // namespace tarn
