#include "tests/end_to_end/watchdog.h"

#include <chrono>

namespace kvn::end_to_end {
namespace {

// More than any test takes, even on a busy machine; every single wait gives up earlier.
constexpr std::chrono::seconds kLongestTest{150};

}  // namespace

Watchdog::Watchdog(const ProcessGroup& watched) : thread([this, &watched] { Run(watched); }) {}

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

void Watchdog::Run(const ProcessGroup& watched) {
    std::unique_lock lock(mutex);
    if (end.wait_for(lock, kLongestTest, [this] { return isOver; })) return;
    hasBitten = true;
    watched.KillAll();
}

}  // namespace kvn::end_to_end
