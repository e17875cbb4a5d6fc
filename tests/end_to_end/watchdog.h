// Ends a test that hangs: a call into a window that never answers returns once that window's process is dead.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "tests/end_to_end/process.h"

namespace kvn::end_to_end {

// Longer than any test takes, even on a busy machine; every single wait gives up earlier.
inline constexpr std::chrono::seconds kLongestTest{150};

class Watchdog {
public:
    // The group is borrowed.
    explicit Watchdog(const ProcessGroup& watched, std::chrono::seconds longestTest = kLongestTest);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    bool HasBitten();

private:
    void Run(const ProcessGroup& watched, std::chrono::seconds longestTest);

    std::mutex mutex;
    std::condition_variable end;
    bool isOver = false;
    bool hasBitten = false;
    std::thread thread;
};

}  // namespace kvn::end_to_end
