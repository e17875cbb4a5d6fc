// The second process, which only waits for the end of the service; and the service's side of it.
#pragma once

#include <windows.h>

#include <cstdint>

#include "platform/unique_resource.h"
#include "service/lifecycle/shared_state.h"

namespace kvn::service {

// Setting this event ends a watcher whose service has not done so. It exists as long as a watcher watches.
inline constexpr wchar_t kWatcherEndEvent[] = L"Local\\KvnMouseApl.EndWatcher";

// Up to three restarts in any ten minutes.
class RestartLimit {
public:
    // Counts a restart; false if it is one too many. Times are 64-bit tick counts.
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

// Ends a watcher that has no service, and waits for its end. True if there is no watcher any more.
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
