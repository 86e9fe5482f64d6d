#pragma once

#include <memory_resource>

namespace tarn {

/// Where the model's objects and their states lie: those of one size beside each other, so that going through
/// many of them reads memory in order. For the thread of the model only.
std::pmr::memory_resource& object_pool();

} // namespace tarn
