#pragma once

namespace tarn {

class TimelineHost;

// The selected keys and the system's clipboard. Each change is one step of undo; what was put in is the selection.

bool clipboard_has_keys();
void copy_selected(TimelineHost& host);
/// First keys stay.
void cut_selected(TimelineHost& host);
/// Puts the keys of the clipboard in at the cursor, and tells what did not fit.
void paste_at_cursor(TimelineHost& host);
/// Copies the selected keys so that the first comes to stand at the cursor.
void duplicate_at_cursor(TimelineHost& host);

} // namespace tarn
