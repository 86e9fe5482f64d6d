#pragma once

#include <QString>

#include <optional>
#include <vector>

class CTimebar;

namespace tarn {

class TimelineHost;
class TimelineSelection;
struct TimelineView;

// What several of the timeline's drags, commands and keys do to the current timebar. Each is one step of undo; what is
// destroyed is asked for first.

/// Whether a range is selected that has a length.
bool has_section(const TimelineView& view);
/// Ends the selection of a range; its keys and script keys of what the bands show become the selection.
void select_range(TimelineView& view);

/// Whether what is dropped there is to be deleted.
bool is_off_timeline(const TimelineView& view, int y);

/// Asks whether to remove the selected section's time, and does it; the timebar becomes shorter by it.
void remove_section(TimelineHost& host);
/// Asks, and removes the selected keys, script keys, or both; or the selected section, where there is one. First keys
/// stay, which a box tells.
enum class Deleted { Keys, Scripts, All };
void delete_selected(TimelineHost& host, Deleted what);
/// What there is to delete of a selection that is not empty.
Deleted selected_kinds(const TimelineSelection& selection);
/// As above, of whatever is selected.
void delete_selected(TimelineHost& host);

/// A box with nothing to decide.
void tell(TimelineHost& host, const QString& text);
/// Tells that first keys cannot be removed, or moved.
void tell_first_not_removed(TimelineHost& host);
void tell_first_not_moved(TimelineHost& host);
void tell_script_is_there(TimelineHost& host);

/// Asks for one line; no answer when it is cancelled or empty.
std::optional<QString> ask_text(TimelineHost& host, const QString& prompt, const QString& initial = {});
/// Asks for a time within the timebar, as seconds or as a frame's number, whichever the timebar shows.
std::optional<float> ask_time(TimelineHost& host, float initial);
/// The same for a length, which is not below 0.
std::optional<float> ask_length(TimelineHost& host);
/// An ease from -100 to 100.
std::optional<float> ask_ease_number(TimelineHost& host, float initial);
std::optional<int> ask_group(TimelineHost& host, const QString& prompt);

} // namespace tarn
