// Page and service together: what is chosen on the page happens when the mouse is pressed.
#include "platform/service_protocol.h"
#include "resources/resource.h"
#include "tests/end_to_end/gesture_driver.h"
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/sheet_driver.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/service_end_to_end/pen.h"
#include "tests/service_end_to_end/world.h"

namespace kvn::service_end_to_end {
namespace {

using end_to_end::GestureEditor;
using end_to_end::GestureList;
using end_to_end::Sheet;
using end_to_end::WaitFor;

LRESULT AskAbout(HWND window, platform::ServiceButton button) {
    return SendMessageW(window, static_cast<UINT>(platform::ServiceMessage::IsButtonHeld), 0,
                        static_cast<LPARAM>(button));
}

class PageAndService : public ServiceTest {
protected:
    Sheet OpenSheet() {
        const std::wstring folder = end_to_end::ProgramFolder();
        const end_to_end::Process host =
            Processes().Start(folder + L"control_panel.exe",
                              {L"--focus", std::to_wstring(IDC_PAGE_TAB), L"--dll", folder + L"KvnMouseUtil.dll"});
        Sheet sheet(host.Id());
        hands.BringToFront(sheet.Window());
        return sheet;
    }
};

const Lines kCopyLines{"sent down Ctrl", "sent down C [Ctrl]", "sent up C [Ctrl]", "sent up Ctrl"};

TEST_F(PageAndService, FunctionThatIsChosenOnThePageHappens) {
    StartService();
    Recorder& recorder = StartRecorder();
    const Sheet sheet = OpenSheet();
    sheet.ChooseByMouse(IDC_PANE_BUTTON4, kCopy);
    sheet.ChooseByMouse(IDC_PANE_TILT_LEFT, Function::kEnter);
    sheet.Apply();
    recorder.ComeToFront();
    PressUntil(recorder, kBack, "sent up C [Ctrl]");
    hands.Press(kTiltLeft);
    ExpectAll(recorder, {"sent down Enter", "sent up Enter"});

    hands.BringToFront(sheet.Window());
    sheet.ChooseByMouse(IDC_PANE_BUTTON4, kBackButton);
    sheet.Close(IDOK);
    recorder.ComeToFront();
    PressUntil(recorder, kBack, "real back up");
}

TEST_F(PageAndService, StrokeThatIsRecordedOnThePageActsOverAProgram) {
    end_to_end::WriteFileBytes(ProfileFile(), end_to_end::ProfileFileText({{"Default", {{"tbutton", "36"}}}}));
    Store({.functions = {{kWheel, kGesture}}});
    StartService();
    Recorder& recorder = StartRecorder();
    Pen pen(hands);
    {
        const Sheet sheet = OpenSheet();
        const GestureList list(sheet);
        list.Click(IDC_GESTURES_ADD);
        const GestureEditor editor(sheet.ProcessId());
        editor.ClickStroke();
        pen.MoveTo({60, 90});
        hands.Press(kWheel);
        WaitFor("the page's trail", [&] { return editor.Trail() != nullptr; });
        pen.Draw("RD");
        hands.Release(kWheel);
        editor.ExpectStroke("RD");
        WaitFor("the end of the page's trail", [&] { return editor.Trail() == nullptr; });
        editor.ChooseFunction(kCopy);
        editor.CloseWith(IDOK);
        sheet.Close(IDOK);
    }
    recorder.ComeToFront();
    recorder.Forget();
    WaitFor("the gesture", [&] {
        pen.MoveTo({60, 90});
        hands.Press(kWheel);
        pen.Draw("RD");
        hands.Release(kWheel);
        return recorder.Arrived(kCopyLines.size(), std::chrono::milliseconds(500)) == kCopyLines;
    });
}

TEST_F(PageAndService, GesturesRestWhileTheEditorIsOpen) {
    end_to_end::WriteFileBytes(ProfileFile(), end_to_end::ProfileFileText({{"Default", {{"tbutton", "36"}}}}));
    Store({.functions = {{kWheel, kGesture}}, .gestures = {L"R\t10\tcopy\t"}});
    StartService();
    Recorder& recorder = StartRecorder();
    const Sheet sheet = OpenSheet();
    {
        const GestureList list(sheet);
        list.Click(IDC_GESTURES_ADD);
        const GestureEditor editor(sheet.ProcessId());
        recorder.ComeToFront();
        recorder.Forget();
        hands.MoveTo({60, 90});
        hands.Press(kWheel);
        for (int x = 60; x <= 240; x += 60) {
            hands.MoveTo({x, 90});
            Sleep(120);  // the service looks ten times a second
        }
        hands.Release(kWheel);
        ExpectAll(recorder, {});
        hands.BringToFront(editor.Window());
        editor.CloseWith(IDCANCEL);
    }
    sheet.Close(IDCANCEL);
    recorder.ComeToFront();
    hands.Click(kWheel);
    ExpectAll(recorder, {"sent wheel down", "sent wheel up"});
}

TEST_F(PageAndService, QuestionIsAnsweredByTheRealButtonWhosePressIsKept) {
    StartService();
    Recorder& recorder = StartRecorder();
    Use({.functions = {{kBack, kCopy}}}, recorder);
    EXPECT_EQ(AskAbout(ServiceWindow(), platform::ServiceButton::Button4), 0);
    hands.Press(kBack);
    WaitFor("the button to be held", [] { return AskAbout(ServiceWindow(), platform::ServiceButton::Button4) != 0; });
    EXPECT_EQ(AskAbout(ServiceWindow(), platform::ServiceButton::Center), 0);
    hands.Release(kBack);
    WaitFor("the button to be up", [] { return AskAbout(ServiceWindow(), platform::ServiceButton::Button4) == 0; });
    ExpectAll(recorder, {});
    hands.Click(kRight);
    ExpectAll(recorder, {"real right down", "real right up"});
    Sleep(600);  // half a second after the last question it is over
    hands.Click(kBack);
    ExpectAll(recorder, kCopyLines);
}

TEST_F(PageAndService, WithoutAnyMouseTheProbeIsRefusedAndEverythingIsNatural) {
    Store({.functions = {{kBack, kOff}}});
    StartService({L"--mouse", L"none"});
    EXPECT_EQ(SendMessageW(ServiceWindow(), static_cast<UINT>(platform::ServiceMessage::Probe), 0, 0),
              platform::kProbeRefused);
    Recorder& recorder = StartRecorder();
    hands.Click(kBack);
    ExpectAll(recorder, {"real back down", "real back up"});
}

TEST_F(PageAndService, SwappedButtonsStayAsTheUserSeesThem) {
    StartService();
    Recorder& recorder = StartRecorder();
    SwapMouseButton(TRUE);
    Use({.functions = {{kBack, kLeftClick}, {kForward, kRightClick}}}, recorder);
    hands.Click(kBack);
    hands.Click(kForward);
    ExpectAll(recorder, {"sent left down", "sent left up", "sent right down", "sent right up"});
    SwapMouseButton(FALSE);
}

}  // namespace
}  // namespace kvn::service_end_to_end
