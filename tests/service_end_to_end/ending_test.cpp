// The service ends in time in any state: while keys are held, a stroke is drawn, or the program in front does not
// answer.
#include <chrono>

#include "tests/end_to_end/story_waiting.h"
#include "tests/service_end_to_end/pen.h"
#include "tests/service_end_to_end/recorder_protocol.h"
#include "tests/service_end_to_end/service_world.h"
#include "tests/support/timed_tries.h"

namespace kvn::service_end_to_end {
namespace {

using end_to_end::WaitFor;

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kEndTime{2};
constexpr WPARAM kHangMilliseconds = 8'000;

class EndingTest : public ServiceTest {
protected:
    // A service that holds keys, draws a stroke and waits for the program in front ends in time once it is asked to.
    template <typename Ask>
    void ExpectEndInTime(const Ask& ask) {
        test::ExpectInTime([&](std::size_t earlier) {
            if (earlier > 0) StartOver();
            KeepServiceBusy();
            const auto allowed = kEndTime + CostOfAStart();
            const auto begin = Clock::now();
            ask();
            ExpectEnd();
            return test::TimedTry{Clock::now() - begin, allowed};
        });
    }

    static bool IsDown(int key) { return (GetAsyncKeyState(key) & 0x8000) != 0; }

private:
    void StartOver() {
        TearDown();
        SetUp();
    }

    void KeepServiceBusy() {
        StartService();
        Recorder& recorder = StartRecorder();
        Use({.functions = {{kBack, kCtrl}, {kForward, kRightClick}, {kWheel, kGesture}},
             .gestures = {L"R\t10\tcopy\t"}},
            recorder, kRight);
        hands.Press(kBack);
        hands.Press(kForward);
        Expect(recorder, {"sent down Ctrl", "sent right down [Ctrl]"});
        DrawOver(recorder);
    }

    // The current time for starting and ending a program on this machine.
    Clock::duration CostOfAStart() const {
        const auto begin = Clock::now();
        EXPECT_EQ(Ask({L"--version"}), 0U);
        return Clock::now() - begin;
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

    static void ExpectEnd() {
        WaitFor("the end of the service", [] { return ServiceWindow() == nullptr && !IsServiceRunning(); });
        EXPECT_FALSE(IsDown(VK_CONTROL));
        EXPECT_FALSE(IsDown(VK_RBUTTON));
    }

    static bool IsServiceRunning() {
        const platform::UniqueKernelObject lock(OpenMutexW(SYNCHRONIZE, FALSE, L"Local\\KvnMouseApl"));
        return static_cast<bool>(lock);
    }
};

TEST_F(EndingTest, QuitReleasesAndEndsInTime) {
    ExpectEndInTime([this] { EXPECT_EQ(Ask({L"--quit"}), 0U); });
}

TEST_F(EndingTest, EndOfTheSessionReleasesAndEndsInTime) {
    ExpectEndInTime([] {
        EXPECT_EQ(SendMessageW(ServiceWindow(), WM_QUERYENDSESSION, 0, 0), TRUE);
        SendMessageW(ServiceWindow(), WM_ENDSESSION, TRUE, 0);
        EXPECT_FALSE(IsDown(VK_CONTROL)) << "after the answer Windows may end the program";
    });
}

// Ends it as an installer does that replaces the program.
TEST_F(EndingTest, AnUpgradeReleasesAndEndsInTime) {
    ExpectEndInTime([] {
        EXPECT_EQ(SendMessageW(ServiceWindow(), WM_QUERYENDSESSION, 0, ENDSESSION_CLOSEAPP), TRUE);
        SendMessageW(ServiceWindow(), WM_ENDSESSION, TRUE, ENDSESSION_CLOSEAPP);
    });
}

}  // namespace
}  // namespace kvn::service_end_to_end
