#include <winsock2.h>

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "bench/benches.h"
#include "bench/key_window.h"
#include "bench/plain_hook.h"
#include "bench/service_hook.h"
#include "tests/support/x_display.h"

namespace kvn::bench {
namespace {

constexpr int kPressRounds = 50;
constexpr int kPressesOfOneRound = 40;
constexpr DWORD kUntilNextPress = 1;  // milliseconds; a user's press meets idle programs
constexpr char kPressBack[] = "when press 8", kReleaseBack[] = "release 8";
constexpr double kMedianLimit = 1.2, kPercentileLimit = 1.5;

// The microseconds from the press of a real button to the key; nothing if no key comes.
std::optional<double> Press(const test::XDisplay& display, const KeyWindow& window) {
    LARGE_INTEGER frequency{};
    QueryPerformanceFrequency(&frequency);
    Sleep(kUntilNextPress);
    const auto start = std::stoll(display.Ask(kPressBack));
    const auto down = window.AwaitKey();
    display.Ask(kReleaseBack);
    if (!down || !window.AwaitKey()) return std::nullopt;
    return 1e6 * static_cast<double>(*down - start) / static_cast<double>(frequency.QuadPart);
}

// The first press of new threads does not count.
bool PressOften(const test::XDisplay& display, const KeyWindow& window, std::vector<double>& microseconds) {
    if (!Press(display, window)) return false;
    for (int press = 0; press < kPressesOfOneRound; ++press) {
        const auto taken = Press(display, window);
        if (!taken) return false;
        microseconds.push_back(*taken);
    }
    return true;
}

double Percentile(std::vector<double>& samples, std::size_t percent) {
    std::ranges::sort(samples);
    return samples[samples.size() * percent / 100];
}

}  // namespace

void BenchPresses(Report& report) {
    const test::XDisplay display;
    const KeyWindow window;
    std::vector<double> ours;
    std::vector<double> theirs;
    bool isComplete = window.IsThere();
    const auto round = [&] {
        {
            const ServiceHook hook(kEscape);
            isComplete = isComplete && PressOften(display, window, ours);
        }
        const PlainHook hook(PlainHook::Kind::PressesEscapeForButton4);
        isComplete = isComplete && PressOften(display, window, theirs);
        return true;
    };
    report.Repeat(kPressRounds, round);
    if (!isComplete) return report.AddMissing("a press and its key in another program's window");
    constexpr char kProgram[] = "a program of twenty lines that does this one thing";
    report.Add({"press to key, median", "us", Percentile(ours, 50), kProgram, Percentile(theirs, 50), kMedianLimit});
    report.Add({"  99th percentile", "us", Percentile(ours, 99), kProgram, Percentile(theirs, 99), kPercentileLimit});
}

}  // namespace kvn::bench
