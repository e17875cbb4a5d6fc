#include "tests/end_to_end/watchdog.h"

namespace kvn::end_to_end {

Watchdog::Watchdog(const ProcessGroup& watched, std::chrono::seconds longestTest)
    : thread([this, &watched, longestTest] { Run(watched, longestTest); }) {}

Watchdog::~Watchdog() {
    {
        const std::lock_guard lock(mutex);
        isOver = true;
    }
    end.notify_one();
    thread.join();
}

bool Watchdog::HasBitten() {
    const std::lock_guard lock(mutex);
    return hasBitten;
}

void Watchdog::Run(const ProcessGroup& watched, std::chrono::seconds longestTest) {
    std::unique_lock lock(mutex);
    if (end.wait_for(lock, longestTest, [this] { return isOver; })) return;
    hasBitten = true;
    watched.KillAll();
}

}  // namespace kvn::end_to_end
