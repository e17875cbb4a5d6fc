// The keys and buttons that the service holds down, counted. The watcher process shares the list's memory, so that it
// can release them if the service is killed. The list is plain data, and each change is a single write, so it is never
// half changed.
#pragma once

#include <windows.h>

#include <array>
#include <atomic>
#include <cstdint>

namespace kvn::service {

// 1 to 254: the virtual key. Mouse buttons have their virtual keys (VK_LBUTTON to VK_XBUTTON2), as the user sees them:
// VK_LBUTTON is the primary one.
struct HeldList {
    // The number of controls that hold each key; above 0 the key is down, or about to be.
    std::array<std::atomic<std::uint8_t>, 256> counts{};
};
static_assert(std::atomic<std::uint8_t>::is_always_lock_free);

// Releases everything in the list, and empties it. For the watcher, and for the end of the service.
void ReleaseAll(HeldList& held);

}  // namespace kvn::service
