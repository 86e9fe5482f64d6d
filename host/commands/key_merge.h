#pragma once

#include "animation/key_track.h"
#include "order_merge.h"

#include <functional>
#include <optional>

namespace tarn {

/// A time at which two versions of a track disagree; none: there is no key in that version.
struct KeyConflict {
    float time; ///< seconds
    std::optional<Key> base;
    std::optional<Key> ours;
    std::optional<Key> theirs;
};

/// Merges the keys of three tracks of one type by their times, and of keys at one time value, ease and group by
/// themselves. `choose` is told of a conflict and answers which side is taken. Costs what the tracks are long.
KeyTrack merge_keys(const KeyTrack& base, const KeyTrack& ours, const KeyTrack& theirs,
                    const std::function<MergeSide(const KeyConflict&)>& choose);

/// A key without its time.
QString json_of(const Key& key);

} // namespace tarn
