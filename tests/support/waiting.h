// Waits for other threads, windows and files: for conditions, never for a time.
#pragma once

#include <windows.h>

#include <chrono>
#include <stdexcept>
#include <string>

namespace kvn::test {

// Only a failing test waits this long; a busy machine must not cause a failure.
inline constexpr std::chrono::seconds kPatience{20};
inline constexpr unsigned kPatienceMilliseconds = 1000U * kPatience.count();

// Ends a test that has waited too long; its text names the condition.
class NeverHappened : public std::runtime_error {
public:
    explicit NeverHappened(const std::string& what) : std::runtime_error("timed out waiting for " + what) {}
};

// Whether the condition becomes true before the patience runs out.
template <typename Condition>
bool ComesTrue(Condition&& condition, std::chrono::milliseconds patience = kPatience) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline) return false;
        Sleep(1);
    }
    return true;
}

// Waits for an answer that is not empty (a window, a number, true) and returns it.
template <typename Question>
auto Await(const std::string& what, Question&& question, std::chrono::milliseconds patience = kPatience) {
    decltype(question()) answer{};
    const auto ask = [&] {
        answer = question();
        return static_cast<bool>(answer);
    };
    if (!ComesTrue(ask, patience)) throw NeverHappened(what);
    return answer;
}

}  // namespace kvn::test
