#pragma once

#include <memory_resource>

namespace tarn {

/// Where the model's objects and their states lie: those of one size beside each other, so that a walk over many of
/// them reads memory in order. For the thread of the model only.
std::pmr::memory_resource& object_pool();

/// Asks for `bytes` of memory at `address` ahead of their use. The objects of a large scene do not fit into the
/// processor's cache; without it a walk over them spends most of its time waiting.
inline void prefetch(const void* address, int bytes)
{
#if defined(__GNUC__)
    constexpr int cache_line = 64;
    for (int offset = 0; offset < bytes; offset += cache_line)
        __builtin_prefetch(static_cast<const char*>(address) + offset, 1);
#else
    (void)address;
    (void)bytes;
#endif
}

} // namespace tarn
