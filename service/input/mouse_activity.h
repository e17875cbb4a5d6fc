// When the mouse was last used, moves included: written by the hook thread, read by threads that work only while the
// user is active.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>

namespace kvn::service {

struct MouseActivity {
    std::atomic<std::uint32_t> lastEvent = 0;  // tick count
    // A sleeper sets the flag, and the next event of the mouse clears it and sets the event.
    std::atomic<bool> isSomeoneAsleep = false;
    HANDLE wake = nullptr;  // an auto-reset event of the sleeper's; set up before the hook starts
};

}  // namespace kvn::service
