// The second process, which only waits for the service's end; and the service's side of it.
#pragma once

#include <windows.h>

#include <cstdint>

#include "platform/unique_resource.h"
#include "service/lifecycle/shared_state.h"

namespace kvn::service {

// Set for a watcher that is to end though its service has not said so. It is there as long as a watcher watches.
inline constexpr wchar_t kWatcherEndEvent[] = L"Local\\KvnMouseApl.EndWatcher";

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

// In the watcher: waits for the end of the service, and starts it again. Returns when the service has ended on purpose,
// when another watcher takes over, or when the service ends too often.
void WatchService(std::uint32_t serviceProcess);

// Ends a watcher without a service, and waits for that. True if there is none any more.
bool EndWatcher();

// In the service.
class Watcher {
public:
    // The memory is borrowed.
    explicit Watcher(SharedMemory& sharedMemory) : memory(sharedMemory), shared(sharedMemory.State()) {}

    // Keeps the watcher that has started this service, or starts one.
    void Start(std::uint32_t startedBy);
    // Signalled when the watcher has ended; null if there is none.
    HANDLE Process() const { return process.Get(); }
    // Call it when the watcher has ended unexpectedly, or there is none: starts another, unless watchers keep ending.
    void Replace();
    // While there is none: the time of the next attempt.
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
