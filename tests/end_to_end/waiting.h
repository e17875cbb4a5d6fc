// Waiting for what another process brings about: for a condition, never for a time.
#pragma once

#include <windows.h>

#include <chrono>
#include <stdexcept>
#include <string>

namespace kvn::end_to_end {

// Fails the running test, whose report shows the text.
class StoryError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// How long the other side may take for anything; a busy machine needs far less.
inline constexpr std::chrono::seconds kPatience{10};

// Asks again and again until the answer counts as true, and returns that answer.
template <typename Condition>
auto WaitFor(const std::string& what, Condition condition) {
    constexpr DWORD kPauseMilliseconds = 5;
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    for (;;) {
        if (auto answer = condition()) return answer;
        if (std::chrono::steady_clock::now() > deadline) throw StoryError("waited in vain for " + what);
        Sleep(kPauseMilliseconds);
    }
}

}  // namespace kvn::end_to_end
