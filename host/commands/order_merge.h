#pragma once

#include "core/value.h"

#include <functional>
#include <vector>

namespace tarn {

/// Which of two versions is taken where they disagree.
enum class MergeSide { Ours, Theirs };

/// The three lists of one parent's children, and those that it has afterwards.
struct OrderVersions {
    IdList base;
    IdList ours;
    IdList theirs;
    std::vector<quint32> members; ///< ascending
};

struct MergedOrder {
    IdList ids;
    bool has_conflict = false; ///< both versions moved something to different places
};

/// Merges the order of children: who stayed in both versions stays, who was moved or added in one of them follows whom it
/// follows there. What both added in one place comes in an order that `comes_before` tells, so that it does not matter
/// which version is ours. It costs little more than the lists are long.
MergedOrder merge_order(
    const OrderVersions& versions, MergeSide preferred,
    const std::function<bool(const std::vector<quint32>& run, const std::vector<quint32>& other)>& comes_before);

} // namespace tarn
