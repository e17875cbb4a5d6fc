// The service ends in time in any state: while keys are held, a stroke is drawn, or the program in front does not
// answer.
#include <chrono>

#include "tests/end_to_end/story_waiting.h"
#include "tests/service_end_to_end/pen.h"
#include "tests/service_end_to_end/recorder_protocol.h"
#include "tests/service_end_to_end/service_world.h"

namespace kvn::service_end_to_end {
namespace {

using end_to_end::WaitFor;

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kEndTime{2};
constexpr WPARAM kHangMilliseconds = 8'000;

class EndingTest : public ServiceTest {
protected:
    void SetUp() override {
        ServiceTest::SetUp();
        StartService();
        Recorder& recorder = StartRecorder();
        Use({.functions = {{kBack, kCtrl}, {kForward, kRightClick}, {kWheel, kGesture}},
             .gestures = {L"R\t10\tcopy\t"}},
            recorder, kRight);
        hands.Press(kBack);
        hands.Press(kForward);
        Expect(recorder, {"sent down Ctrl", "sent right down [Ctrl]"});
        DrawOver(recorder);
        MeasureAStart();
    }

    // The current time for starting and ending a program on this machine.
    void MeasureAStart() {
        const auto begin = Clock::now();
        EXPECT_EQ(Ask({L"--version"}), 0U);
        costOfAStart = Clock::now() - begin;
    }

    void DrawOver(const Recorder& recorder) {
        Pen pen(hands);
        pen.MoveTo({60, 90});
        hands.Press(kWheel);
        WaitForTrail();
        pen.Draw("R");
        PostMessageW(recorder.Window(), kHangFor, kHangMilliseconds, 0);
        hands.Click(kBack);  // waits for the program in front
    }

    static bool IsDown(int key) { return (GetAsyncKeyState(key) & 0x8000) != 0; }

    void ExpectEnd(Clock::time_point begin) const {
        WaitFor("the end of the service", [] { return ServiceWindow() == nullptr && !IsServiceRunning(); });
        EXPECT_LT(Clock::now() - begin, kEndTime + costOfAStart);
        EXPECT_FALSE(IsDown(VK_CONTROL));
        EXPECT_FALSE(IsDown(VK_RBUTTON));
    }

    static bool IsServiceRunning() {
        const platform::UniqueKernelObject lock(OpenMutexW(SYNCHRONIZE, FALSE, L"Local\\KvnMouseApl"));
        return static_cast<bool>(lock);
    }

private:
    Clock::duration costOfAStart{};
};

TEST_F(EndingTest, QuitReleasesAndEndsInTime) {
    const auto begin = Clock::now();
    EXPECT_EQ(Ask({L"--quit"}), 0U);
    ExpectEnd(begin);
}

TEST_F(EndingTest, EndOfTheSessionReleasesAndEndsInTime) {
    const auto begin = Clock::now();
    EXPECT_EQ(SendMessageW(ServiceWindow(), WM_QUERYENDSESSION, 0, 0), TRUE);
    SendMessageW(ServiceWindow(), WM_ENDSESSION, TRUE, 0);
    EXPECT_FALSE(IsDown(VK_CONTROL)) << "after the answer Windows may end the program";
    ExpectEnd(begin);
}

// Ends it as an installer does that replaces the program.
TEST_F(EndingTest, AnUpgradeReleasesAndEndsInTime) {
    const auto begin = Clock::now();
    EXPECT_EQ(SendMessageW(ServiceWindow(), WM_QUERYENDSESSION, 0, ENDSESSION_CLOSEAPP), TRUE);
    SendMessageW(ServiceWindow(), WM_ENDSESSION, TRUE, ENDSESSION_CLOSEAPP);
    ExpectEnd(begin);
}

}  // namespace
}  // namespace kvn::service_end_to_end
