// A long run of the service, for as long as the environment variable KVN_SOAK_MINUTES says; skipped without it. Prints
// and compares the growth of the service.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "tests/service_end_to_end/service_world.h"
#include "tests/support/process_use.h"

namespace kvn::service_end_to_end {
namespace {

using std::chrono::steady_clock;

struct State {
    test::ProcessUse use;
    double medianMilliseconds = 0;  // from a press to its key in a program's window
};

std::chrono::minutes WantedTime() {
    const char* const wanted = std::getenv("KVN_SOAK_MINUTES");
    return std::chrono::minutes(wanted == nullptr ? 0 : std::atoi(wanted));
}

class ServiceSoakTest : public ServiceTest {
protected:
    std::chrono::seconds LongestTime() const override { return ServiceTest::LongestTime() + 2 * WantedTime(); }

    void Start() {
        StartService();
        recorder = &StartRecorder();
        Use(Choice(), *recorder);
    }
    Choice Choice() const {
        return {.functions = {{kBack, kCtrl}, {kForward, kEnter}, {kRight, kOff}, {kTiltLeft, kScrollRight}}};
    }

    // In a new recorder, without earlier lines.
    State Measure(const std::wstring& name) {
        constexpr int kPresses = 51;
        recorder = &StartRecorder(name);
        Sleep(2'000);  // until it is idle
        State state;
        const platform::UniqueKernelObject process(
            OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ | PROCESS_DUP_HANDLE, FALSE, ServiceProcess()));
        state.use = test::UseOf(process.Get(), "KvnMouseApl.exe", "1234:5678").value_or(test::ProcessUse());
        std::vector<double> times;
        for (int press = 0; press < kPresses; ++press) times.push_back(TimeOfPress());
        std::ranges::sort(times);
        state.medianMilliseconds = times[times.size() / 2];
        return state;
    }

    double TimeOfPress() const {
        const auto begin = steady_clock::now();
        hands.Press(kBack);
        static_cast<void>(recorder->Arrived(1));
        const std::chrono::duration<double, std::milli> time = steady_clock::now() - begin;
        hands.Release(kBack);
        static_cast<void>(recorder->Arrived(1));
        return time.count();
    }

    // Some twenty events of each kind, and the page's message after an apply.
    void LiveAMoment() {
        for (int event = 0; event < 20; ++event) {
            for (const ButtonSlot control : {kBack, kForward, kRight, kTiltLeft, kTiltRight}) hands.Click(control);
            hands.TurnWheelDown();
            hands.MoveTo({200 + static_cast<LONG>(random() % 100), 200 + static_cast<LONG>(random() % 100)});
        }
        Store(Choice());
        Announce();
        static_cast<void>(recorder->ArrivedUntilNow());
        events += 20 * 7;
    }

    static void Print(const char* when, const State& state) {
        std::printf("%-12s %8.0f KB private, %4.0f handles, press to key %6.2f ms\n", when, state.use.privateKilobytes,
                    state.use.handles, state.medianMilliseconds);
        std::fflush(stdout);
    }

    Recorder* recorder = nullptr;
    std::mt19937 random{1};
    long events = 0;
};

TEST_F(ServiceSoakTest, ALongLifeLeavesItAsItWas) {
    if (WantedTime().count() == 0) GTEST_SKIP() << "KVN_SOAK_MINUTES is not set";
    Start();
    for (int moment = 0; moment < 10; ++moment) LiveAMoment();
    const State first = Measure(L"first");
    Print("at first", first);
    const auto end = steady_clock::now() + WantedTime();
    while (steady_clock::now() < end) LiveAMoment();
    const State last = Measure(L"last");
    Print("at the end", last);
    std::printf("%ld events\n", events);
    constexpr double kGrainOfHeap = 64;  // kilobytes
    constexpr double kOpenJustThen = 8;  // handles; an apply that leaves one behind leaves hundreds
    EXPECT_LE(last.use.privateKilobytes, first.use.privateKilobytes + kGrainOfHeap);
    EXPECT_LE(last.use.handles, first.use.handles + kOpenJustThen);
    EXPECT_EQ(Status()["reinstalled"], "0");
}

}  // namespace
}  // namespace kvn::service_end_to_end
