#include "object_pool.h"

namespace tarn {

std::pmr::memory_resource& object_pool()
{
    // Never destroyed: static objects may hold states to the end of the program.
    static auto& pool = *new std::pmr::unsynchronized_pool_resource;
    return pool;
}

} // namespace tarn
