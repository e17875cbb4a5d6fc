// What the service holds down now: keys and buttons, counted. The list lies in memory that the watcher process shares,
// so that it can release what a killed service has left: plain data, changed with single writes only, and never half of
// one.
#pragma once

#include <windows.h>

#include <array>
#include <atomic>
#include <cstdint>

namespace kvn::service {

// 1 to 254: the virtual key. Mouse buttons stand under their own virtual keys (VK_LBUTTON to VK_XBUTTON2), as the user
// sees them: VK_LBUTTON is the primary one.
struct HeldList {
    // How many controls hold each; above 0 it is down, or about to be.
    std::array<std::atomic<std::uint8_t>, 256> counts{};
};
static_assert(std::atomic<std::uint8_t>::is_always_lock_free);

// Releases all that the list holds, and empties it. For the watcher, and for the end of the service.
void ReleaseAll(HeldList& held);

}  // namespace kvn::service
