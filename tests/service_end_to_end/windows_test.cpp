// Functions that act on the window in front, and a program in front that does not answer.
#include "tests/end_to_end/story_waiting.h"
#include "tests/service_end_to_end/recorder_protocol.h"
#include "tests/service_end_to_end/service_world.h"

namespace kvn::service_end_to_end {
namespace {

using end_to_end::WaitFor;

constexpr WPARAM kHangMilliseconds = 6'000;

class WindowFunctionsTest : public ServiceTest {
protected:
    void SetUp() override {
        ServiceTest::SetUp();
        StartService();
    }

    // The back button closes, forward maximizes, the right button minimizes.
    void UseCommands(Recorder& recorder) {
        Use({.functions = {{kBack, kCloseWindow}, {kForward, kMaximize}, {kRight, kMinimize}}}, recorder);
    }
};

TEST_F(WindowFunctionsTest, MaximizedWindowIsRestored) {
    Recorder& recorder = StartRecorder();
    UseCommands(recorder);
    ShowWindow(recorder.Window(), SW_MAXIMIZE);
    WaitFor("the maximized window", [&] { return IsZoomed(recorder.Window()) != FALSE; });
    hands.Click(kForward);
    ExpectAll(recorder, {"posted SC_RESTORE"});
}

TEST_F(WindowFunctionsTest, DialogIsClosedItselfAndItsOwnerMaximizedAndMinimized) {
    Recorder& recorder = StartRecorder(L"withdialog");
    UseCommands(recorder);
    Recorder& dialog = StartRecorder(L"dialogs", {L"--dialog"});
    const HWND inner = WaitFor("the dialog", [] { return FindWindowW(kRecorderClass, L"dialogs dialog"); });
    hands.BringToFront(inner);
    hands.Click(kBack);
    hands.Click(kForward);
    hands.Click(kRight);
    ExpectAll(dialog, {"posted SC_CLOSE to the dialog", "posted SC_MAXIMIZE", "posted SC_MINIMIZE"});
    EXPECT_EQ(recorder.Arrived(0), Lines());
}

TEST_F(WindowFunctionsTest, WindowsObey) {
    Recorder& recorder = StartRecorder(L"obeying", {L"--obey"});
    UseCommands(recorder);
    hands.Click(kForward);
    WaitFor("the maximized window", [&] { return IsZoomed(recorder.Window()) != FALSE; });
    hands.Click(kForward);
    WaitFor("the restored window", [&] { return IsZoomed(recorder.Window()) == FALSE; });
    hands.Click(kBack);
    EXPECT_EQ(recorder.Process().WaitForExitCode(), 0U);
}

TEST_F(WindowFunctionsTest, DesktopAndTaskbarAreLeftAlone) {
    Recorder& recorder = StartRecorder();
    UseCommands(recorder);
    for (const wchar_t* const shellClass : {L"Progman", L"Shell_TrayWnd"}) {
        Recorder& shell = StartRecorder(shellClass, {L"--class", shellClass});
        const std::size_t logged = LogLines().size();
        for (const ButtonSlot control : {kBack, kForward, kRight}) hands.Click(control);
        WaitFor("the presses in the log", [&] { return LogLines().size() >= logged + 3; });
        ExpectAll(shell, {});
    }
    recorder.ComeToFront();
    ExpectAll(recorder, {});
}

TEST_F(WindowFunctionsTest, ProgramThatDoesNotAnswerDelaysNoRelease) {
    Recorder& hung = StartRecorder(L"hung");
    Recorder& other = StartRecorder(L"other");
    Use({.functions = {{kBack, kCloseWindow}, {kForward, kCtrl}, {kRight, kMaximize}}}, other);
    hands.BringToFront(hung.Window());
    hands.MoveTo(other.Middle());
    PostMessageW(hung.Window(), kHangFor, kHangMilliseconds, 0);
    hands.Press(kForward);
    WaitFor("Ctrl", [] { return (GetAsyncKeyState(VK_CONTROL) & 0x8000) != 0; });
    hands.Click(kRight);
    hands.Click(kBack);
    hands.Release(kForward);
    WaitFor("Ctrl to be up", [] { return (GetAsyncKeyState(VK_CONTROL) & 0x8000) == 0; });
    EXPECT_EQ(hung.Arrived(0), Lines()) << "it answers already";
    WaitFor("the commands", [&] { return hung.Arrived(4).size() >= 4; });
}

}  // namespace
}  // namespace kvn::service_end_to_end
