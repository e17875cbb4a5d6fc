// Page and service together: a button does what was chosen on the page.
#include <windows.h>

#include <commctrl.h>

#include "platform/service_protocol.h"
#include "resources/resource.h"
#include "tests/end_to_end/gesture_driver.h"
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/sheet_driver.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/service_end_to_end/pen.h"
#include "tests/service_end_to_end/service_world.h"
#include "tests/support/combo_contents.h"
#include "tests/support/tab_contents.h"

namespace kvn::service_end_to_end {
namespace {

using end_to_end::GestureEditor;
using end_to_end::Sheet;
using end_to_end::WaitFor;

LRESULT AskAbout(HWND window, platform::ServiceButton button) {
    return SendMessageW(window, static_cast<UINT>(platform::ServiceMessage::IsButtonHeld), 0,
                        static_cast<LPARAM>(button));
}

class PageAndServiceTest : public ServiceTest {
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

    // The display shows a new window a little after Windows does.
    void Click(HWND window, POINT place) {
        pen.MoveTo(place);
        WaitFor("the window under the pointer", [&] { return hands.IsPointerOver(GetAncestor(window, GA_ROOT)); });
        hands.Click(kLeft);
    }

    void Click(HWND control) { Click(control, end_to_end::MiddleOf(end_to_end::ScreenRectangle(control))); }

    // Sends what the combo box sends when the user chooses an entry.
    static void Choose(HWND combo, int function) {
        test::SelectData(combo, function);
        SendMessageW(GetParent(combo), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(combo));
    }

    static void Press(HWND dialog, int button) { PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0); }

    static void Apply(const Sheet& sheet) {
        WaitFor("a change to apply", [&] { return sheet.CanApply(); });
        Press(sheet.Window(), end_to_end::kApplyButton);
        WaitFor("the end of applying", [&] { return !sheet.CanApply(); });
    }

    // Opens the editor of a new gesture.
    GestureEditor AddGesture(const Sheet& sheet) {
        RECT tab = test::PlaceOfTab(sheet.Control(IDC_PAGE_TAB), 1);
        MapWindowPoints(sheet.Control(IDC_PAGE_TAB), nullptr, reinterpret_cast<POINT*>(&tab), 2);
        Click(sheet.Window(), end_to_end::MiddleOf(tab));
        const HWND add = GetDlgItem(sheet.GesturePane(), IDC_GESTURES_ADD);
        WaitFor("the list of gestures", [&] { return IsWindowVisible(add) != FALSE; });
        Click(add);
        return GestureEditor(sheet.ProcessId());
    }

    Pen pen{hands};
};

const Lines kCopyLines{"sent down Ctrl", "sent down C [Ctrl]", "sent up C [Ctrl]", "sent up Ctrl"};

TEST_F(PageAndServiceTest, FunctionThatIsChosenOnThePageActs) {
    StartService();
    Recorder& recorder = StartRecorder();
    const Sheet sheet = OpenSheet();
    Choose(sheet.Control(IDC_PANE_BUTTON4), kCopy);
    Choose(sheet.Control(IDC_PANE_TILT_LEFT), Function::kEnter);
    Apply(sheet);
    Press(sheet.Window(), IDCANCEL);
    WaitFor("the end of the sheet", [&] { return !IsWindow(sheet.Window()); });
    recorder.ComeToFront();
    PressUntil(recorder, kBack, "sent up C [Ctrl]");
    hands.Press(kTiltLeft);
    ExpectAll(recorder, {"sent down Enter", "sent up Enter"});
}

TEST_F(PageAndServiceTest, StrokeThatIsRecordedOnThePageActsOverAProgram) {
    end_to_end::WriteFileBytes(ProfileFile(), end_to_end::ProfileFileText({{"Default", {{"tbutton", "36"}}}}));
    Store({.functions = {{kWheel, kGesture}}});
    StartService();
    Recorder& recorder = StartRecorder();
    {
        const Sheet sheet = OpenSheet();
        const GestureEditor editor = AddGesture(sheet);
        Click(editor.Control(IDC_GESTURE_STROKE));
        editor.ExpectStroke("Start");
        pen.MoveTo({60, 90});
        hands.Press(kWheel);
        WaitFor("the page's trail", [&] { return editor.Trail() != nullptr; });
        pen.Draw("RD");
        hands.Release(kWheel);
        editor.ExpectStroke("RD");
        WaitFor("the end of the page's trail", [&] { return editor.Trail() == nullptr; });
        Choose(editor.Control(IDC_GESTURE_FUNCTION), kCopy);
        Press(editor.Window(), IDOK);
        editor.WaitUntilClosed();
        Apply(sheet);
    }
    recorder.ComeToFront();
    recorder.Forget();
    Sleep(600);  // the button is free half a second after the page's last question
    WaitFor("the gesture", [&] {
        pen.MoveTo({60, 90});
        hands.Press(kWheel);
        pen.Draw("RD");
        hands.Release(kWheel);
        return recorder.Arrived(kCopyLines.size(), std::chrono::milliseconds(500)) == kCopyLines;
    });
}

TEST_F(PageAndServiceTest, GesturesRestWhileTheEditorIsOpen) {
    end_to_end::WriteFileBytes(ProfileFile(), end_to_end::ProfileFileText({{"Default", {{"tbutton", "36"}}}}));
    Store({.functions = {{kWheel, kGesture}}, .gestures = {L"R\t10\tcopy\t"}});
    StartService();
    Recorder& recorder = StartRecorder();
    const Sheet sheet = OpenSheet();
    const GestureEditor editor = AddGesture(sheet);
    recorder.ComeToFront();
    recorder.Forget();
    pen.MoveTo({60, 90});
    hands.Press(kWheel);
    for (int x = 60; x <= 240; x += 60) {
        pen.MoveTo({x, 90});
        Sleep(120);  // the service looks ten times a second
    }
    hands.Release(kWheel);
    WaitFor("the press in the log", [&] { return !LogLines().empty(); });
    EXPECT_EQ(recorder.ArrivedUntilNow(), Lines());
    Press(editor.Window(), IDCANCEL);
    editor.WaitUntilClosed();
    recorder.ComeToFront();
    WaitFor("the click of a press that draws nothing", [&] {
        hands.Click(kWheel);
        return recorder.Arrived(2, std::chrono::milliseconds(500)) == Lines{"sent wheel down", "sent wheel up"};
    });
}

TEST_F(PageAndServiceTest, QuestionIsAnsweredByTheRealButtonWhosePressIsKept) {
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
    Sleep(600);  // it is free half a second after the last question
    hands.Click(kBack);
    ExpectAll(recorder, kCopyLines);
}

TEST_F(PageAndServiceTest, WithoutAnyMouseTheProbeIsRefusedAndEverythingIsNatural) {
    Store({.functions = {{kBack, kOff}}});
    StartService({L"--mouse", L"none"});
    EXPECT_EQ(SendMessageW(ServiceWindow(), static_cast<UINT>(platform::ServiceMessage::Probe), 0, 0),
              platform::kProbeRefused);
    Recorder& recorder = StartRecorder();
    hands.Click(kBack);
    ExpectAll(recorder, {"real back down", "real back up"});
}

class SwappedButtons {
public:
    SwappedButtons() { SwapMouseButton(TRUE); }
    ~SwappedButtons() { SwapMouseButton(FALSE); }
    SwappedButtons(const SwappedButtons&) = delete;
    SwappedButtons& operator=(const SwappedButtons&) = delete;
};

TEST_F(PageAndServiceTest, SwappedButtonsStayAsTheUserSeesThem) {
    StartService();
    Recorder& recorder = StartRecorder();
    const SwappedButtons swapped;
    Use({.functions = {{kBack, kLeftClick}, {kForward, kRightClick}}}, recorder);
    hands.Click(kBack);
    hands.Click(kForward);
    ExpectAll(recorder, {"sent left down", "sent left up", "sent right down", "sent right up"});
}

}  // namespace
}  // namespace kvn::service_end_to_end
