// Gestures drawn over another program's window, with the trail on the screen.
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/service_end_to_end/pen.h"
#include "tests/service_end_to_end/service_world.h"
#include "tests/support/narrow_text.h"

namespace kvn::service_end_to_end {
namespace {

using end_to_end::WaitFor;

class DrawingGesturesTest : public ServiceTest {
protected:
    void SetUp() override {
        ServiceTest::SetUp();
        StartService();
        recorder = &StartRecorder();
        Use({.functions = {{kWheel, kGesture}},
             .gestures = {L"R\t10\tcopy\t", L"DR\t37\tkeys\tLeft Ctrl+Q", L"RD\t21\tCtrl alone\t"}},
            *recorder, kForward);
    }

    void BeginStroke() {
        pen.MoveTo({60, 90});
        hands.Press(kWheel);
    }

    void Draw(const std::string& letters) {
        BeginStroke();
        WaitForTrail();
        pen.Draw(letters);
    }

    void Expect(const Lines& lines) { ServiceTest::Expect(*recorder, lines); }
    void ExpectAll(const Lines& lines) { ServiceTest::ExpectAll(*recorder, lines); }

    Pen pen{hands};
    Recorder* recorder = nullptr;
};

TEST_F(DrawingGesturesTest, StrokeActsAtTheReleaseAndItsTrailGoes) {
    Draw("R");
    ExpectAll({});
    hands.Release(kWheel);
    Expect({"sent down Ctrl", "sent down C [Ctrl]", "sent up C [Ctrl]", "sent up Ctrl"});
    pen.WaitUntilTrailHasGone();
    ExpectAll({});
}

TEST_F(DrawingGesturesTest, StrokeOfTwoLettersTypesItsOwnKeys) {
    Draw("DR");
    hands.Release(kWheel);
    ExpectAll({"sent down Ctrl", "sent down Q [Ctrl]", "sent up Q [Ctrl]", "sent up Ctrl"});
}

TEST_F(DrawingGesturesTest, FunctionsThatButtonsHoldBeginAndEndAtOnce) {
    Draw("RD");
    hands.Release(kWheel);
    ExpectAll({"sent down Ctrl", "sent up Ctrl"});
}

TEST_F(DrawingGesturesTest, UnknownStrokeDoesNothing) {
    Draw("D");
    hands.Release(kWheel);
    pen.WaitUntilTrailHasGone();
    ExpectAll({});
}

TEST_F(DrawingGesturesTest, PressThatDrawsNothingIsAClick) {
    BeginStroke();
    pen.MoveTo({80, 90});
    hands.Release(kWheel);
    ExpectAll({"sent wheel down", "sent wheel up"});
}

TEST_F(DrawingGesturesTest, RightButtonCancelsTheStroke) {
    Draw("R");
    hands.Click(kRight);
    pen.WaitUntilTrailHasGone();
    hands.Release(kWheel);
    WaitUntilTrailHasGone(*recorder);
    ExpectAll({});
    hands.Click(kRight);
    ExpectAll({"real right down", "real right up"});
}

TEST_F(DrawingGesturesTest, CancelledStrokeMakesNoClick) {
    BeginStroke();
    hands.Click(kRight);
    hands.Release(kWheel);
    ExpectAll({});
}

TEST_F(DrawingGesturesTest, OtherButtonsAndTheWheelDoWhatTheyAlwaysDo) {
    Draw("R");
    hands.Click(kLeft);
    hands.Click(kBack);
    hands.TurnWheelUp();
    ExpectAll({"real left down", "real left up", "real back down", "real back up", "real turn 120"});
    hands.Release(kWheel);
    ExpectAll({"sent down Ctrl", "sent down C [Ctrl]", "sent up C [Ctrl]", "sent up Ctrl"});
}

TEST_F(DrawingGesturesTest, TrailTakesNoFocus) {
    const auto windowLines = [&] {
        Lines lines = recorder->All();
        std::erase_if(lines, [](const std::string& line) { return !line.starts_with("window "); });
        return lines;
    };
    const Lines before = windowLines();
    Draw("R");
    EXPECT_EQ(GetForegroundWindow(), recorder->Window());
    hands.Release(kWheel);
    pen.WaitUntilTrailHasGone();
    EXPECT_EQ(windowLines(), before);
}

TEST_F(DrawingGesturesTest, PauseCancelsTheStroke) {
    Draw("R");
    EXPECT_EQ(Ask({L"--pause"}), 0U);
    pen.WaitUntilTrailHasGone();
    hands.Release(kWheel);
    ExpectAll({});
}

TEST_F(DrawingGesturesTest, LockCancelsTheStroke) {
    Draw("R");
    SendMessageW(ServiceWindow(), WM_WTSSESSION_CHANGE, WTS_SESSION_LOCK, 0);
    pen.WaitUntilTrailHasGone();
    hands.Release(kWheel);
    ExpectAll({});
}

TEST_F(DrawingGesturesTest, ProgramWithAnotherProfileCancelsTheStroke) {
    end_to_end::WriteFileBytes(
        ProfileFile(),
        end_to_end::ProfileFileText(
            {{.name = "Default"}, {.name = "Beta", .programs = {{"beta", test::Narrow(Scratch()) + "beta.exe"}}}}));
    Recorder& beta = StartRecorder(L"beta");
    WaitFor("the other profile", [&] {
        hands.MoveTo(beta.Middle());
        return Status()["profile"] == "Beta";
    });
    recorder->ComeToFront();
    WaitFor("the profile of the gestures", [&] { return Status()["profile"] == "Default"; });
    recorder->Forget();

    Draw("R");
    beta.ComeToFront();
    pen.WaitUntilTrailHasGone();
    hands.Release(kWheel);
    ServiceTest::ExpectAll(beta, {});
    EXPECT_EQ(recorder->Arrived(0), Lines());
}

}  // namespace
}  // namespace kvn::service_end_to_end
