// Flying scroll over another program's window: a real wheel is flicked.
#include <algorithm>
#include <chrono>
#include <thread>

#include "tests/end_to_end/waiting.h"
#include "tests/service_end_to_end/world.h"

namespace kvn::service_end_to_end {
namespace {

using Clock = std::chrono::steady_clock;
using end_to_end::WaitFor;

// 80 notches a second at first, half as many every 0.7 s, and the last one before they are 2 a second.
constexpr std::ptrdiff_t kNotchesOfFlight = 78;
constexpr std::chrono::milliseconds kFlightTime{3725};

constexpr char kFlown[] = "sent turn -120";

std::ptrdiff_t FlownIn(const Lines& lines) {
    return std::count(lines.begin(), lines.end(), kFlown);
}

class FlyingScroll : public ServiceTest {
protected:
    void SetUp() override { SetUpWith({L"--mouse", L"1234:5678:7:1"}); }

    void SetUpWith(const std::vector<std::wstring>& options) {
        ServiceTest::SetUp();
        StartService(options);
        recorder = &StartRecorder();
        Use({.flicks = 1}, *recorder, kForward);
    }

    void Flick() const {
        for (int notch = 0; notch < 6; ++notch) hands.TurnWheelDown();
    }

    // A slow machine may be too slow for a flick.
    Lines FlickUntilItFlies() {
        Lines arrived;
        WaitFor("the wheel to fly", [&] {
            recorder->Forget();
            Flick();
            arrived = recorder->Arrived(7, std::chrono::seconds(1));
            return FlownIn(arrived) > 0;
        });
        return arrived;
    }

    // A notch that was on its way when the flight was stopped counts for nothing. The flight would last for seconds.
    void ExpectStopped() {
        recorder->Forget();
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        recorder->Forget();
        EXPECT_EQ(FlownIn(recorder->Arrived(1, std::chrono::milliseconds(500))), 0);
    }

    Recorder* recorder = nullptr;
};

TEST_F(FlyingScroll, OneFlickLetsTheWheelFlyUntilItHasRunDown) {
    Lines arrived = FlickUntilItFlies();
    const auto begin = Clock::now();
    EXPECT_EQ(std::count(arrived.begin(), arrived.end(), "real turn -120"), 6);
    while (Clock::now() - begin < kFlightTime + std::chrono::milliseconds(500)) {
        for (const std::string& line : recorder->Arrived(1, std::chrono::milliseconds(100))) arrived.push_back(line);
    }
    EXPECT_EQ(FlownIn(arrived), kNotchesOfFlight);
    ExpectStopped();
}

TEST_F(FlyingScroll, EveryButtonStopsTheFlight) {
    for (const ButtonSlot control : {kLeft, kRight, kWheel, kBack, kForward, kTiltLeft}) {
        FlickUntilItFlies();
        control == kTiltLeft ? hands.Press(control) : hands.Click(control);
        SCOPED_TRACE(static_cast<int>(control));
        ExpectStopped();
    }
}

TEST_F(FlyingScroll, ANotchInTheOtherDirectionStopsTheFlight) {
    FlickUntilItFlies();
    hands.TurnWheelUp();
    ExpectStopped();
}

TEST_F(FlyingScroll, NotchesInTheSameDirectionPassMeanwhile) {
    FlickUntilItFlies();
    recorder->Forget();
    hands.TurnWheelDown();
    const Lines arrived = recorder->ArrivedUpTo("real turn -120");
    EXPECT_FALSE(arrived.empty());
    EXPECT_FALSE(recorder->ArrivedUpTo(kFlown).empty());
}

TEST_F(FlyingScroll, AnotherWindowInFrontStopsTheFlight) {
    FlickUntilItFlies();
    Recorder& other = StartRecorder(L"other");
    WaitFor("the end of the flight", [&] {
        other.Forget();
        return other.Arrived(1, std::chrono::milliseconds(500)).empty();
    });
    recorder->ComeToFront();
    ExpectStopped();
}

TEST_F(FlyingScroll, APauseStopsTheFlight) {
    FlickUntilItFlies();
    EXPECT_EQ(Ask({L"--pause"}), 0U);
    ExpectStopped();
}

class FlyingScrollThatTheMouseLacks : public FlyingScroll {
protected:
    void SetUp() override { SetUpWith({L"--mouse", L"1234:5678:7:1::1"}); }
};

TEST_F(FlyingScrollThatTheMouseLacks, NothingFlies) {
    for (int flick = 0; flick < 3; ++flick) Flick();
    ExpectAll(*recorder, Lines(18, "real turn -120"));
}

}  // namespace
}  // namespace kvn::service_end_to_end
