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

    // As the sheet's thread sees it.
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
    EXPECT_EQ(0U, Queries());
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, AClickAsksAtEveryTickOfTheTimer) {
    OpenWith({});
    const HWND editor = OpenEditorWithTimer();
    ClickStroke(editor);
    EXPECT_EQ(L"Start", Stroke(editor));
    Await("five queries", [this] { return Queries() >= 5; });
    EXPECT_EQ((ServiceCall{NumberOf(ServiceMessage::IsButtonHeld), 0, 4, true}), service->Calls().back());
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, OtherTimersAreNoTicks) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    SendMessageW(editor, WM_TIMER, 220, 0);
    EXPECT_EQ(0U, Queries());
    Tick(editor);
    EXPECT_EQ(1U, Queries());
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
    EXPECT_EQ(GetParam().debugText, debugOutput.Take());
    Tick(editor);
    EXPECT_EQ((ServiceCall{NumberOf(ServiceMessage::IsButtonHeld), 0, GetParam().mask, true}), service->Calls().back());
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
    EXPECT_EQ(4, service->Calls().back().lParam);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, ATiltOpensTheEditorButRecordsNothing) {
    mouse.buttonCount = 7;
    OpenWithFunctions({{"tiltleft", "36"}});
    const HWND editor = OpenEditor();
    const DebugOutput debugOutput;
    ClickStroke(editor);
    Tick(editor);
    EXPECT_EQ(L"", Stroke(editor));
    EXPECT_EQ(0U, Queries());
    EXPECT_EQ("", debugOutput.Text());
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, TheFieldFollowsTheStroke) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    HoldGestureButton(editor);
    EXPECT_EQ(L"Start", Stroke(editor));
    Draw(editor, "R");
    EXPECT_EQ(L"R", Stroke(editor));
    Draw(editor, "D");
    EXPECT_EQ(L"RD", Stroke(editor));
    ReleaseGestureButton(editor);
    EXPECT_EQ(L"RD", Stroke(editor));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, AnEmptyStrokeEmptiesTheField) {
    OpenWith({{"U", 3, "", ""}});
    SelectRow(0);
    const HWND editor = OpenEditor(IDC_GESTURES_EDIT);
    Record(editor, "");
    EXPECT_EQ(L"", Stroke(editor));
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
    EXPECT_EQ(before, Queries());
    EXPECT_EQ(L"R", Stroke(editor));
    Record(editor, "U");
    EXPECT_EQ(L"U", Stroke(editor));
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
    EXPECT_EQ(std::string::npos, debugOutput.Text().find("j="));
    EXPECT_EQ(L"R", Stroke(editor));
    Draw(editor, "U");
    ReleaseGestureButton(editor);
    EXPECT_EQ(L"RU", Stroke(editor));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, TheRightButtonGivesTheStrokeUp) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ChooseFunction(editor, 1);
    ClickStroke(editor);
    HoldGestureButton(editor);
    Draw(editor, "R");
    HoldRightButton(true);
    Tick(editor);
    HoldRightButton(false);
    EXPECT_EQ(L"", Stroke(editor));
    EXPECT_EQ(nullptr, OverlayOf(editor));
    ExpectOkIgnored(editor);
    const std::size_t before = Queries();
    Tick(editor);
    EXPECT_EQ(before, Queries());
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
    EXPECT_NE(nullptr, OverlayOf(editor));
    Draw(editor, "D");
    EXPECT_EQ(L"D", Stroke(editor));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, FiveSegmentsShowTheLastFour) {
    OpenWith({});
    const HWND editor = OpenEditor();
    Record(editor, "RULDR");
    EXPECT_EQ(L"ULDR", Stroke(editor));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, ATickThatComesWhileTheServiceIsAskedIsNone) {
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
    EXPECT_EQ(1, nested);
    EXPECT_EQ(L"R", Stroke(editor));
    EXPECT_EQ(nullptr, OverlayOf(editor));
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
    EXPECT_EQ(L"Start", Stroke(editor));
    HoldGestureButton(editor);
    Draw(editor, "L");
    ReleaseGestureButton(editor);
    EXPECT_EQ(L"L", Stroke(editor));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureMgrTest, WithoutTheServiceNothingStarts) {
    OpenWith({});
    const HWND editor = OpenEditor();
    service.reset();
    ClickStroke(editor);
    for (int i = 0; i < 3; ++i) Tick(editor);
    EXPECT_EQ(L"Start", Stroke(editor));
    EXPECT_EQ(nullptr, OverlayOf(editor));
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
    EXPECT_EQ(L"D", Stroke(editor));
    EXPECT_EQ(nullptr, OverlayOf(editor));
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
    EXPECT_EQ(L"", Stroke(editor));
    const std::size_t before = Queries();
    Tick(editor);
    EXPECT_EQ(before, Queries());
    service->ReplyTo(ServiceMessage::IsButtonHeld, 0);
    Record(editor, "D");
    EXPECT_EQ(L"D", Stroke(editor));
    CloseEditor(editor, IDCANCEL);
}

}  // namespace
}  // namespace kvn::test
