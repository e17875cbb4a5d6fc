// The guard at every place where other people's code calls ours: exports, COM methods, window procedures, callbacks.
#pragma once

#include <atomic>
#include <utility>

#include "platform/memory_reserve.h"

namespace kvn::platform {

// How many of the module's guarded functions are being carried out now, in whatever thread.
inline std::atomic<int> callsInside = 0;

class [[nodiscard]] CallInside {
public:
    CallInside() { ++callsInside; }
    CallInside(const CallInside&) = delete;
    CallInside& operator=(const CallInside&) = delete;
    ~CallInside() { --callsInside; }
};

// Runs the work and returns its result; an exception, which must never reach the caller's frames, gives the fallback.
template <typename Result, typename Work>
Result AtBoundary(Result fallback, Work&& work) noexcept {
    const CallInside call;
    KeepMemoryReserve();
    try {
        return std::forward<Work>(work)();
    } catch (...) {
    }
    // The code around may throw next, and others want what this exception has given back.
    KeepMemoryReserve();
    return fallback;
}

// Runs the work; false when an exception broke it off.
template <typename Work>
bool Completes(Work&& work) noexcept {
    return AtBoundary(false, [&] {
        std::forward<Work>(work)();
        return true;
    });
}

}  // namespace kvn::platform
