// Flying scroll: after flicks of a real wheel it goes on, slower and slower, until something stops it.
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/service_end_to_end/service_world.h"
#include "tests/support/narrow_text.h"

namespace kvn::service_end_to_end {
namespace {

using end_to_end::WaitFor;
using namespace std::chrono_literals;

constexpr int kNotchesOfFlick = 6;
// A flight begins with 8 * S notches a second, which halve every 0.7 s, until fewer than 2 a second are left: it lasts
// 0.7 s * log2(8 * S / 2), and has as many notches as lie below that curve.
constexpr std::size_t kNotchesOfSlowest = 6, kNotchesOfFastest = 78;
constexpr Flying kSlowest{.flicks = 1, .scrollSpeed = 1}, kFastest{.flicks = 1, .scrollSpeed = 10};
// At the highest speed the first notch is due after 13 ms.
constexpr auto kLongerThanTheFirstNotch = 400ms;
// Flicks are forgotten after 400 ms; a busy machine delays the flight, too.
constexpr auto kLongerThanFlicksCount = 5s;
// Longer than the gap between the last two notches of a flight.
constexpr auto kLongerThanAnyNotch = 900ms;

const std::string kDown = "sent turn -120";

Lines Turned(int notches, const std::string& line = "real turn -120") {
    return Lines(static_cast<std::size_t>(notches), line);
}

class FlyingTest : public ServiceTest {
protected:
    void SetUp() override {
        ServiceTest::SetUp();
        StartService();
        times = Scratch() + L"times.txt";
        recorder = &StartRecorder(L"recorder", {L"--times", times});
        WaitUntilSeenInFront();
    }

    // Where Windows does not announce the program in front, the service only polls it, and a flight ends when it finds
    // another one. So this gives the recorder a profile and waits until it is in force.
    void WaitUntilSeenInFront() {
        end_to_end::ProfileText tied{.name = "Tied"};
        tied.programs.push_back({"recorder", test::Narrow(Scratch()) + "recorder.exe"});
        end_to_end::WriteFileBytes(ProfileFile(), end_to_end::ProfileFileText({{.name = "Default"}, tied}));
        WaitForProfile("program");
        DeleteFileW(ProfileFile().c_str());
        WaitForProfile("selected");
    }
    void WaitForProfile(const std::string& why) {
        WaitFor("the profile", [&] {
            recorder->ComeToFront();
            return Status()["why"] == why;
        });
    }

    void UseFlying(const Flying& flying) { Use({.flying = flying}, *recorder); }
    // Everything is natural, the wheel button too.
    void UseFlyingAlone(const Flying& flying) {
        UseFlying(flying);
        Store({.flying = flying});
        Announce();
        PressUntil(*recorder, kWheel, "real wheel up");
    }

    void FlickOnce() {
        hands.FlickDown(1);
        EXPECT_EQ(recorder->Arrived(kNotchesOfFlick), Turned(kNotchesOfFlick));
    }
    // Earlier notches are discarded. A display that stalls stretches the pauses, so that flicks do not count; then they
    // are made again. Each try is complete in itself, since the service has forgotten the earlier flicks.
    void StartFlight(int flicks = 1) {
        constexpr int kTries = 5;
        bool isFlying = false;
        for (int tries = 0; tries < kTries && !isFlying; ++tries) {
            hands.FlickDown(flicks);
            isFlying = !recorder->ArrivedUpTo(kDown, kLongerThanFlicksCount).empty();
        }
        EXPECT_TRUE(isFlying);
    }
    // However late the notches come.
    void ExpectNotches(std::size_t least) { EXPECT_GE(recorder->Arrived(least).size(), least); }
    // All notches of the flight, until none has come for a long time.
    std::size_t NotchesUntilRest() {
        std::size_t notches = 0;
        for (Lines more; !(more = recorder->Arrived(1, kLongerThanAnyNotch)).empty();) {
            notches += static_cast<std::size_t>(std::count(more.begin(), more.end(), kDown));
        }
        return notches;
    }
    // When the notches of all flights came to the recorder, in milliseconds.
    std::vector<long long> TimesOfNotches() const {
        std::vector<long long> found;
        std::istringstream lines(end_to_end::ReadFileBytes(times));
        long long time = 0;
        for (std::string line; lines >> time && std::getline(lines >> std::ws, line);) {
            if (line == kDown) found.push_back(time);
        }
        return found;
    }
    void ExpectStopped() {
        const std::size_t notches = NotchesUntilRest();
        // The last three come after almost three seconds, in which a busy machine stops the flight too.
        EXPECT_LT(notches, kNotchesOfFastest - 3);
    }

    Recorder* recorder = nullptr;
    std::wstring times;
};

TEST_F(FlyingTest, OneFlickFliesAndSlowsDown) {
    UseFlying(kSlowest);
    hands.FlickDown(1);
    Lines expected = Turned(kNotchesOfFlick);
    expected.insert(expected.end(), kNotchesOfSlowest, kDown);
    EXPECT_EQ(recorder->Arrived(expected.size()), expected);
    EXPECT_EQ(NotchesUntilRest(), 0U);
}

TEST_F(FlyingTest, FliesAwayFromTheUserToo) {
    UseFlying(kSlowest);
    hands.FlickUp(1);
    Lines expected = Turned(kNotchesOfFlick, "real turn 120");
    expected.insert(expected.end(), kNotchesOfSlowest, "sent turn 120");
    EXPECT_EQ(recorder->Arrived(expected.size()), expected);
}

TEST_F(FlyingTest, NotchesBecomeFewerAndFewer) {
    UseFlying(kFastest);
    hands.FlickDown(1);
    ExpectNotches(kNotchesOfFlick + kNotchesOfFastest);
    EXPECT_EQ(NotchesUntilRest(), 0U);
    const std::vector<long long> notches = TimesOfNotches();
    ASSERT_EQ(notches.size(), kNotchesOfFastest);
    EXPECT_GT(notches.back() - notches.front(), 2'500);
    // Seven times as many come in the first half of the time; after a short stall the late ones come at once.
    const long long middle = (notches.front() + notches.back()) / 2;
    const auto early = std::ranges::count_if(notches, [=](long long time) { return time < middle; });
    EXPECT_GT(early, static_cast<std::ptrdiff_t>(3 * kNotchesOfFastest / 4));
}

TEST_F(FlyingTest, TheChosenNumberOfFlicksIsNeeded) {
    for (const int flicks : {2, 5}) {
        SCOPED_TRACE(flicks);
        UseFlying({.flicks = flicks, .scrollSpeed = 10});
        hands.FlickDown(flicks - 1);
        EXPECT_EQ(recorder->Arrived(static_cast<std::size_t>(kNotchesOfFlick * (flicks - 1))),
                  Turned(kNotchesOfFlick * (flicks - 1)));
        EXPECT_EQ(recorder->Arrived(1, 600ms), Lines());  // after that the flicks are forgotten
        StartFlight(flicks);
        hands.TurnWheelUp();
        static_cast<void>(NotchesUntilRest());
    }
}

TEST_F(FlyingTest, AnyButtonStopsIt) {
    for (const ButtonSlot button : {kLeft, kRight, kWheel, kBack, kForward}) {
        SCOPED_TRACE(static_cast<int>(button));
        UseFlyingAlone(kFastest);
        StartFlight();
        hands.Click(button);
        ExpectStopped();
    }
}

TEST_F(FlyingTest, TiltStopsIt) {
    for (const ButtonSlot tilt : {kTiltLeft, kTiltRight}) {
        UseFlying(kFastest);
        StartFlight();
        hands.Press(tilt);
        ExpectStopped();
    }
}

TEST_F(FlyingTest, NotchTheOtherWayStopsItAndOneTheSameWayDoesNot) {
    UseFlying(kFastest);
    StartFlight();
    hands.TurnWheelDown();
    ExpectNotches(kNotchesOfFastest - 20);
    static_cast<void>(NotchesUntilRest());
    StartFlight();
    hands.TurnWheelUp();
    ExpectStopped();
}

TEST_F(FlyingTest, AnotherWindowInFrontStopsIt) {
    Recorder& other = StartRecorder(L"other");
    recorder->ComeToFront();
    WaitUntilSeenInFront();
    UseFlying(kFastest);
    StartFlight();
    hands.BringToFront(other.Window());
    // The display sends notches to the window below the pointer, not to the one in front.
    ExpectStopped();
    EXPECT_EQ(other.Arrived(0), Lines());
}

TEST_F(FlyingTest, PauseStopsIt) {
    UseFlying(kFastest);
    StartFlight();
    EXPECT_EQ(Ask({L"--pause"}), 0U);
    ExpectStopped();
    FlickOnce();
    EXPECT_EQ(recorder->Arrived(1, kLongerThanTheFirstNotch), Lines());
}

TEST_F(FlyingTest, SettingsWithoutItStopIt) {
    UseFlying(kFastest);
    StartFlight();
    Store({});
    Announce();
    ExpectStopped();
    FlickOnce();
    EXPECT_EQ(recorder->Arrived(1, kLongerThanTheFirstNotch), Lines());
}

TEST_F(FlyingTest, OffByDefault) {
    hands.FlickDown(5);  // nothing is stored

    EXPECT_EQ(recorder->Arrived(5 * kNotchesOfFlick), Turned(5 * kNotchesOfFlick));
    EXPECT_EQ(recorder->Arrived(1, kLongerThanTheFirstNotch), Lines());
}

TEST_F(FlyingTest, MouseThatForbidsItDoesNotFly) {
    UseFlying(kFastest);
    EXPECT_EQ(Ask({L"--mouse", L"1234:5678:7:1:KvnSample:1"}), 0U);
    FlickOnce();
    EXPECT_EQ(recorder->Arrived(1, kLongerThanTheFirstNotch), Lines());
    EXPECT_EQ(Ask({L"--mouse", L"1234:5678:7:1:KvnSample:0"}), 0U);
    StartFlight();
}

// For scripts/flying-curve: copies the notches of flights at three speeds, with their times, to the file that the
// environment names.
TEST_F(FlyingTest, DISABLED_FlightsAreMeasured) {
    std::string flights;
    for (const int scrollSpeed : {2, 5, 10}) {
        UseFlying({.flicks = 1, .scrollSpeed = scrollSpeed});
        const std::size_t before = end_to_end::ReadFileBytes(times).size();
        hands.FlickDown(1);
        static_cast<void>(NotchesUntilRest());
        flights += "speed " + std::to_string(scrollSpeed) + '\n' + end_to_end::ReadFileBytes(times).substr(before);
    }
    const char* const file = std::getenv("KVN_FLIGHTS");
    ASSERT_NE(file, nullptr);
    end_to_end::WriteFileBytes(std::wstring(file, file + std::strlen(file)), flights);
}

}  // namespace
}  // namespace kvn::service_end_to_end
