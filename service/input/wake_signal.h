// Wakes one thread. Once raised, it stays raised until that thread has awaited it.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>

#include "platform/unique_resource.h"

namespace kvn::service {

// Since Windows 8 this waits on an address, which wakes sooner than an event; before that, on an event.
class WakeSignal {
public:
    WakeSignal();
    WakeSignal(const WakeSignal&) = delete;
    WakeSignal& operator=(const WakeSignal&) = delete;

    bool IsThere() const { return waitOnAddress != nullptr || event; }
    // From any thread; it never waits and allocates no memory.
    void Raise();
    // On the one thread that is woken. It may return early, as after a raise that was already noticed.
    void Await(DWORD milliseconds);

private:
    using WaitFunction = BOOL WINAPI(volatile void* address, void* compare, SIZE_T size, DWORD milliseconds);
    using WakeFunction = void WINAPI(void* address);

    std::atomic<std::uint32_t> isRaised = 0;
    WaitFunction* waitOnAddress;
    WakeFunction* wakeByAddress;
    platform::UniqueKernelObject event;
};

}  // namespace kvn::service
