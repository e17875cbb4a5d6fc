// Recording a stroke in the editor: the button query, and what the field shows.
#include <atomic>

#include "tests/support/debug_output.h"
#include "tests/support/gesture_fixture.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

using platform::ServiceMessage;

class GestureMgrTest : public GestureTest {
protected:
    std::size_t Queries() const { return service->CountOf(ServiceMessage::IsButtonHeld); }

    // As the sheet's thread sees the button.
    void HoldRightButton(bool hold) const {
        sheet->Run([=] {
            BYTE state[256]{};
            GetKeyboardState(state);
            state[VK_RBUTTON] = hold ? 0x80 : 0;
            SetKeyboardState(state);
        });
    }
    void OpenWithFunctions(const std::vector<ProfileElement>& functions) {
        WriteProfiles({ProfileText("Default", functions)});
        Open();
    }
};

TEST_F(GestureMgrTest, NothingIsAskedBeforeTheFieldIsClicked) {
    OpenWith({});
    const HWND editor = OpenEditor();
    for (int i = 0; i < 5; ++i) Tick(editor);
    EXPECT_EQ(Queries(), 0U);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, AClickAsksAtEveryTickOfTheTimer) {
    OpenWith({});
    const HWND editor = OpenEditorWithTimer();
    ClickStroke(editor);
    EXPECT_EQ(Stroke(editor), L"Start");
    Await("five queries", [this] { return Queries() >= 5; });
    EXPECT_EQ(service->Calls().back(), (ServiceCall{NumberOf(ServiceMessage::IsButtonHeld), 0, 4, true}));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, OtherTimersDoNotTick) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    SendMessageW(editor, WM_TIMER, 220, 0);
    EXPECT_EQ(Queries(), 0U);
    Tick(editor);
    EXPECT_EQ(Queries(), 1U);
    CloseEditor(editor, IDCANCEL);
}

struct ButtonMask {
    const char* element;
    LPARAM mask;
    const char* debugText;
};

class GestureButtonTest : public GestureMgrTest, public testing::WithParamInterface<ButtonMask> {};

TEST_P(GestureButtonTest, IsAskedForByItsMask) {
    OpenWithFunctions({{GetParam().element, "36"}});
    const HWND editor = OpenEditor();
    DebugOutput debugOutput;
    ClickStroke(editor);
    EXPECT_EQ(debugOutput.Take(), GetParam().debugText);
    Tick(editor);
    EXPECT_EQ(service->Calls().back(), (ServiceCall{NumberOf(ServiceMessage::IsButtonHeld), 0, GetParam().mask, true}));
    CloseEditor(editor, IDCANCEL);
}

INSTANTIATE_TEST_SUITE_P(Slots, GestureButtonTest,
                         testing::Values(ButtonMask{"lbutton", 1, "j=1\n"}, ButtonMask{"rbutton", 2, "j=2\n"},
                                         ButtonMask{"tbutton", 4, "j=4\n"}, ButtonMask{"button4", 8, "j=5\n"},
                                         ButtonMask{"button5", 16, "j=6\n"}),
                         [](const auto& test) { return std::string(test.param.element); });

TEST_F(GestureMgrTest, OfSeveralGestureButtonsTheFirstIsAskedFor) {
    OpenWithFunctions({{"button5", "36"}, {"tbutton", "36"}, {"tiltleft", "36"}});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    Tick(editor);
    EXPECT_EQ(service->Calls().back().lParam, 4);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, ATiltOpensTheEditorButRecordsNothing) {
    mouse.buttonCount = 7;
    OpenWithFunctions({{"tiltleft", "36"}});
    const HWND editor = OpenEditor();
    const DebugOutput debugOutput;
    ClickStroke(editor);
    Tick(editor);
    EXPECT_EQ(Stroke(editor), L"");
    EXPECT_EQ(Queries(), 0U);
    EXPECT_EQ(debugOutput.Text(), "");
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, TheFieldFollowsTheStroke) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    HoldGestureButton(editor);
    EXPECT_EQ(Stroke(editor), L"Start");
    Draw(editor, "R");
    EXPECT_EQ(Stroke(editor), L"R");
    Draw(editor, "D");
    EXPECT_EQ(Stroke(editor), L"RD");
    ReleaseGestureButton(editor);
    EXPECT_EQ(Stroke(editor), L"RD");
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, AnEmptyStrokeEmptiesTheField) {
    OpenWith({{"U", 3, "", ""}});
    SelectRow(0);
    const HWND editor = OpenEditor(IDC_GESTURES_EDIT);
    Record(editor, "");
    EXPECT_EQ(Stroke(editor), L"");
    ExpectOkIgnored(editor);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, EachRecordingNeedsAClick) {
    OpenWith({});
    const HWND editor = OpenEditor();
    Record(editor, "R");
    const std::size_t before = Queries();
    HoldGestureButton(editor);
    Draw(editor, "U");
    ReleaseGestureButton(editor);
    EXPECT_EQ(Queries(), before);
    EXPECT_EQ(Stroke(editor), L"R");
    Record(editor, "U");
    EXPECT_EQ(Stroke(editor), L"U");
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, ClicksDuringARecordingDoNothing) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    HoldGestureButton(editor);
    Draw(editor, "R");
    const DebugOutput debugOutput;
    ClickStroke(editor);
    EXPECT_EQ(debugOutput.Text().find("j="), std::string::npos);
    EXPECT_EQ(Stroke(editor), L"R");
    Draw(editor, "U");
    ReleaseGestureButton(editor);
    EXPECT_EQ(Stroke(editor), L"RU");
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, TheRightButtonCancelsTheStroke) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ChooseFunction(editor, 1);
    ClickStroke(editor);
    HoldGestureButton(editor);
    Draw(editor, "R");
    HoldRightButton(true);
    Tick(editor);
    HoldRightButton(false);
    EXPECT_EQ(Stroke(editor), L"");
    EXPECT_EQ(OverlayOf(editor), nullptr);
    ExpectOkIgnored(editor);
    const std::size_t before = Queries();
    Tick(editor);
    EXPECT_EQ(Queries(), before);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, AButtonThatIsStillHeldStartsTheNextStrokeAtOnce) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    HoldGestureButton(editor);
    HoldRightButton(true);
    Tick(editor);
    HoldRightButton(false);
    ClickStroke(editor);
    Tick(editor);
    EXPECT_NE(OverlayOf(editor), nullptr);
    Draw(editor, "D");
    EXPECT_EQ(Stroke(editor), L"D");
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, FiveSegmentsShowTheLastFour) {
    OpenWith({});
    const HWND editor = OpenEditor();
    Record(editor, "RULDR");
    EXPECT_EQ(Stroke(editor), L"ULDR");
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, ATickWhileTheServiceIsAskedDoesNothing) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    HoldGestureButton(editor);
    Draw(editor, "R");
    std::atomic<int> nested = 0;
    service->WhenCalled(ServiceMessage::IsButtonHeld, [&] {
        if (nested++ == 0)
            SendMessageTimeoutW(editor, WM_TIMER, kCaptureTimer, 0, SMTO_NORMAL, kPatienceMilliseconds, nullptr);
    });
    ReleaseGestureButton(editor);
    EXPECT_EQ(nested, 1);
    EXPECT_EQ(Stroke(editor), L"R");
    EXPECT_EQ(OverlayOf(editor), nullptr);
    service->WhenCalled(ServiceMessage::IsButtonHeld, [] {});
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, TheRightButtonBeforeAStrokeHasNoEffect) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    HoldRightButton(true);
    Tick(editor);
    HoldRightButton(false);
    EXPECT_EQ(Stroke(editor), L"Start");
    HoldGestureButton(editor);
    Draw(editor, "L");
    ReleaseGestureButton(editor);
    EXPECT_EQ(Stroke(editor), L"L");
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, WithoutTheServiceNothingStarts) {
    OpenWith({});
    const HWND editor = OpenEditor();
    service.reset();
    ClickStroke(editor);
    for (int i = 0; i < 3; ++i) Tick(editor);
    EXPECT_EQ(Stroke(editor), L"Start");
    EXPECT_EQ(OverlayOf(editor), nullptr);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, AServiceThatVanishesEndsTheStroke) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    HoldGestureButton(editor);
    Draw(editor, "D");
    service.reset();
    Tick(editor);
    EXPECT_EQ(Stroke(editor), L"D");
    EXPECT_EQ(OverlayOf(editor), nullptr);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, AnEditorClosedInMidStrokeLeavesNothingBehind) {
    OpenWith({});
    HWND editor = OpenEditor();
    ClickStroke(editor);
    HoldGestureButton(editor);
    Draw(editor, "RU");
    const HWND overlay = OverlayOf(editor);
    CloseEditor(editor, IDCANCEL);
    EXPECT_FALSE(IsWindow(overlay));

    editor = OpenEditor();
    EXPECT_EQ(Stroke(editor), L"");
    const std::size_t before = Queries();
    Tick(editor);
    EXPECT_EQ(Queries(), before);
    service->ReplyTo(ServiceMessage::IsButtonHeld, 0);
    Record(editor, "D");
    EXPECT_EQ(Stroke(editor), L"D");
    CloseEditor(editor, IDCANCEL);
}

}  // namespace
}  // namespace kvn::test
