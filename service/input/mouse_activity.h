// When the mouse was last used, moves included: written by the hook thread, read by threads that work only while the
// user is active.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>

#include "platform/unique_resource.h"

namespace kvn::service {

struct MouseActivity {
    std::atomic<std::uint32_t> lastEvent = 0;  // tick count
    // A sleeper sets the flag, and the next event of the mouse clears it and sets the event.
    std::atomic<bool> isSomeoneAsleep = false;
    // Lives as long as this object, so that neither thread has to end before the other. Null if it could not be
    // created.
    const platform::UniqueKernelObject wake{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
};

}  // namespace kvn::service
