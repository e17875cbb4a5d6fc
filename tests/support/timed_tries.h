// Tries at something that must be done in time. A busy machine lengthens the time, but not in each of several tries.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

namespace kvn::test {

struct TimedTry {
    std::chrono::steady_clock::duration taken;
    std::chrono::steady_clock::duration allowed;
};

// Expects that one of three tries is in time. `tryOnce` gets the number of earlier tries. After any other
// failure there is no further try.
template <typename Try>
void ExpectInTime(const Try& tryOnce) {
    constexpr std::size_t kTries = 3;
    std::vector<double> seconds;
    while (seconds.size() < kTries) {
        const TimedTry done = tryOnce(seconds.size());
        if (done.taken <= done.allowed || testing::Test::HasFailure()) return;
        seconds.push_back(std::chrono::duration<double>(done.taken).count());
    }
    ADD_FAILURE() << "seconds of each try: " << testing::PrintToString(seconds);
}

}  // namespace kvn::test
