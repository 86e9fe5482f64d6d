#pragma once

#include "anim_time.h"
#include "core/status.h"
#include "timebar.h"

#include <QByteArray>
#include <QStringList>

namespace tarn {

/// Under which keys lie on the clipboard.
constexpr const char* keys_mime_type = "application/x-tarn-keys";

/// The keys as a text, with what they belong to.
QByteArray copy_keys(const KeySelection& keys);
/// The same, and they go, as a step of undo; first keys stay.
QByteArray cut_keys(CTimebar& bar, const KeySelection& keys);

struct PastedKeys {
    KeySelection keys;    ///< where they stand now
    QStringList left_out; ///< what did not fit and why, in the program's language
};

/// Puts the keys of a text into the timebar, the earliest of them at `at`, as one step of undo. Those of one object go to
/// the bar's current one, and those of one variable to its current variable of that type; others, and where none is
/// current, to what they belong to. Timer objects and variables that are missing are made. A key that stands where one
/// comes gives up its place; all others stay. Times are snapped to `grid`. Fails where the text is none of keys, which may
/// be made up by anyone.
Result<PastedKeys> paste_keys(CTimebar& bar, const QByteArray& text, float at, const SnapGrid& grid = {});

/// Copies of the keys that stand `offset` seconds later in the same variables, as one step of undo; answers where. Those
/// that would come to stand out of range are left out.
KeySelection duplicate_keys(CTimebar& bar, const KeySelection& keys, float offset, const SnapGrid& grid = {});

} // namespace tarn
