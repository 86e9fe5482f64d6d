#pragma once

#include "core/document.h"
#include "order_merge.h"

namespace tarn {

/// A place where two versions changed their base in ways that do not go together, with what each of them has there.
struct MergeConflict {
    quint32 object = 0; ///< 0: the scene as a whole
    QString place{};    ///< what the object is called, or the file
    QString field{};    ///< the attribute; empty where the whole object is meant
    QString part{};     ///< of the attribute: an entry of a map, a time of a key in seconds; empty for all of it
    // JSON; null where there is nothing
    QString base{};
    QString ours{};
    QString theirs{};
};

struct MergedScene {
    SceneSnapshot scene;
    std::vector<MergeConflict> conflicts; ///< each of them was decided
};

/// Which side is taken in a conflict.
using ChooseSide = std::function<MergeSide(const MergeConflict&)>;

/// Merges two versions of a scene that both come from `base`: object by object, which their ids tell, and attribute by
/// attribute; maps by their entries, keys by their times, children in their order. What is new on both sides under one id
/// gets another id in theirs, and references, functions and their callers follow. Of `document` only the tables are used.
/// Fails when the three are not versions of one scene.
Result<MergedScene> merge_versions(const Document& document, SceneSnapshot base, SceneSnapshot ours,
                                   SceneSnapshot theirs, const ChooseSide& choose);
/// The same with one side taken in all conflicts.
Result<MergedScene> merge_versions(const Document& document, SceneSnapshot base, SceneSnapshot ours,
                                   SceneSnapshot theirs, MergeSide preferred = MergeSide::Ours);

} // namespace tarn
