// The second process, which does nothing but wait for the service's end; and the service's side of it.
#pragma once

#include <windows.h>

#include <cstdint>

#include "platform/unique_resource.h"
#include "service/lifecycle/shared_state.h"

namespace kvn::service {

// Up to three restarts in any ten minutes.
class RestartLimit {
public:
    // Counts one; false when it is one too many. Times are tick counts of 64 bits.
    bool Allows(std::uint64_t now);

private:
    static constexpr std::size_t kRestarts = 3;
    static constexpr std::uint64_t kPeriodMilliseconds = 600'000;
    std::array<std::uint64_t, kRestarts> times{};
    std::size_t count = 0;
};

// In the watcher: waits for the end of the service, as often as that is started again. Returns when the service has
// ended as it was meant to, when another watcher takes over, or when the service ends too often.
void WatchService(std::uint32_t serviceProcess);

// Has a watcher without a service end, and waits for that. True when there is none any more.
bool EndWatcher();

// In the service.
class Watcher {
public:
    // The memory is borrowed.
    explicit Watcher(SharedMemory& sharedMemory) : memory(sharedMemory), shared(sharedMemory.State()) {}

    // Keeps the watcher that has started this service, or starts one.
    void Start(std::uint32_t startedBy);
    // Signalled when the watcher has ended; null without one.
    HANDLE Process() const { return process.Get(); }
    // The watcher has ended, and nobody asked it to, or there is none: starts another, unless none stays just now.
    void Replace();
    // While there is none: when to try again.
    DWORD MillisecondsToRetry() const;

private:
    bool Adopt(std::uint32_t processId);
    void StartAnother();

    SharedMemory& memory;
    SharedState& shared;
    platform::UniqueKernelObject process;
    std::uint64_t startTime = 0;
    int shortLives = 0;
};

}  // namespace kvn::service
