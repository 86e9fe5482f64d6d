#pragma once

#include "timeline_rows.h"

namespace tarn {

class TimelineHost;

// What the rows' menu and the keyboard do to keys. Each change is one step of undo.

// Which keys are selected, of the rows that are not locked
void select_all(TimelineHost& host);
void invert_selection(TimelineHost& host);
void select_before_cursor(TimelineHost& host);
void select_after_cursor(TimelineHost& host);

/// The frame before or after the cursor.
void step_frames(TimelineHost& host, int frames);
/// Moves what is selected by whole frames, as far as there is room.
void nudge_selected(TimelineHost& host, int frames);
/// Moves what is selected so that its first or last comes to stand at the time.
void move_first_to(TimelineHost& host, float time);
void move_last_to(TimelineHost& host, float time);
void mirror_selected(TimelineHost& host);
void ease_selected(TimelineHost& host, float ease);
/// Ask for a time of the first, and a value and an ease of all.
void ask_time_of_selected(TimelineHost& host);
void ask_value_of_selected(TimelineHost& host);
void ask_ease_of_selected(TimelineHost& host);

void fit_all(TimelineHost& host);
void fit_selected(TimelineHost& host);

/// Asks for the value of the row's key at the time; of a variable without one there, a new key gets it.
void edit_row_key(TimelineHost& host, const TimelineRow& row, float time);
void toggle_fold(TimelineView& view, const TimelineRow& row);

} // namespace tarn
