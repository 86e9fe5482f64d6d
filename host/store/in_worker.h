#pragma once

#include "core/progress.h"

#include <atomic>
#include <chrono>
#include <future>
#include <system_error>
#include <utility>

namespace tarn {

/// Does `work(progress)` in a thread of its own and answers what it answers; this thread waits, and tells `progress` what
/// the work tells. Work that nobody watches stays in this thread.
template <class Work>
auto in_worker(const Progress& progress, Work&& work) -> decltype(work(progress))
{
    if (!progress.is_watched())
        return work(progress);
    std::atomic<double> share = 0;
    std::atomic<bool> goes_on = true;
    const Progress::Tell tell = [&](double now) {
        share = now;
        return goes_on.load();
    };
    decltype(std::async(std::launch::async, [&] { return work(Progress(tell)); })) result;
    try {
        result = std::async(std::launch::async, [&] { return work(Progress(tell)); });
    } catch (const std::system_error&) { // There are no threads left.
        return work(progress);
    }
    while (result.wait_for(std::chrono::milliseconds(10)) != std::future_status::ready)
        goes_on = progress.go_on(share) && goes_on;
    return result.get();
}

} // namespace tarn
