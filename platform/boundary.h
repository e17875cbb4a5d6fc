// The guard at every place where other people's code calls ours: exports, COM methods, window procedures, callbacks.
#pragma once

#include <utility>

#include "platform/memory_reserve.h"

namespace kvn::platform {

// Runs the work and returns its result; an exception, which must never reach the caller's frames, gives the fallback.
template <typename Result, typename Work>
Result AtBoundary(Result fallback, Work&& work) noexcept {
    KeepMemoryReserve();
    try {
        return std::forward<Work>(work)();
    } catch (...) {
        return fallback;
    }
}

}  // namespace kvn::platform
