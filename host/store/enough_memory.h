#pragma once

#include "core/language.h"
#include "core/status.h"

#include <new>
#include <stdexcept>

namespace tarn {

inline Status memory_is_short()
{
    return Status::error(lang(u"内存不足", u"there is not enough memory"));
}

/// Does `work` and answers the Status or Result that it answers, or memory_is_short() where memory does not suffice.
template <class Work>
auto with_enough_memory(Work&& work) -> decltype(work())
{
    try {
        return work();
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) {
    }
    return memory_is_short();
}

} // namespace tarn
