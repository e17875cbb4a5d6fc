// The guard wherever other code calls ours: exports, COM methods, window procedures, callbacks.
#pragma once

#include <atomic>
#include <utility>

#include "platform/memory_reserve.h"

namespace kvn::platform {

// The number of guarded functions of the module that are running now, on all threads.
inline std::atomic<int> callsInside = 0;

class [[nodiscard]] CallInside {
public:
    CallInside() { ++callsInside; }
    CallInside(const CallInside&) = delete;
    CallInside& operator=(const CallInside&) = delete;
    ~CallInside() { --callsInside; }
};

// Runs the work and returns its result, or the fallback after an exception: none may reach the caller.
template <typename Result, typename Work>
Result AtBoundary(Result fallback, Work&& work) noexcept {
    const CallInside call;
    KeepMemoryReserve();
    try {
        return std::forward<Work>(work)();
    } catch (...) {
    }
    // The caller may throw next, and other threads may need the reserve.
    KeepMemoryReserve();
    return fallback;
}

// Runs the work; false if an exception ended it.
template <typename Work>
bool Completes(Work&& work) noexcept {
    return AtBoundary(false, [&] {
        std::forward<Work>(work)();
        return true;
    });
}

}  // namespace kvn::platform
