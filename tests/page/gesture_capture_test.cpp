// Recording a stroke in the editor: the button query, the notices' effects, the overlay.
#include "tests/page/gesture_test.h"
#include "tests/support/debug_output.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

using platform::ServiceMessage;

class GestureCaptureTest : public GestureTest {
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
    COLORREF PixelOf(HWND overlay, int x, int y) const {
        COLORREF colour = 0;
        sheet->Run([&] {
            const HDC context = GetDC(overlay);
            colour = GetPixel(context, x, y);
            ReleaseDC(overlay, context);
        });
        return colour;
    }
    void OpenWithFunctions(const std::vector<ProfileElement>& functions) {
        WriteProfiles({ProfileText("Default", functions)});
        Open();
    }
};

TEST_F(GestureCaptureTest, NothingIsAskedBeforeTheFieldIsClicked) {
    OpenWith({});
    const HWND editor = OpenEditor();
    for (int i = 0; i < 5; ++i) Tick(editor);
    EXPECT_EQ(0U, Queries());
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureCaptureTest, AClickAsksAtEveryTickOfTheTimer) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    EXPECT_EQ(L"Start", Stroke(editor));
    Await("five queries", [this] { return Queries() >= 5; });
    EXPECT_EQ((ServiceCall{32775, 0, 4, true}), service->Calls().back());
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureCaptureTest, OtherTimersAreNoTicks) {
    OpenWith({});
    const HWND editor = OpenEditor();
    sheet->Run([=] { KillTimer(editor, 221); });
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

class GestureButtonTest : public GestureCaptureTest, public testing::WithParamInterface<ButtonMask> {};

TEST_P(GestureButtonTest, IsAskedForByItsMask) {
    OpenWithFunctions({{"rbutton", "1"}, {GetParam().element, "36"}});
    const HWND editor = OpenEditor();
    DebugOutput debugOutput;
    ClickStroke(editor);
    EXPECT_EQ(GetParam().debugText, debugOutput.Take());
    Tick(editor);
    EXPECT_EQ((ServiceCall{32775, 0, GetParam().mask, true}), service->Calls().back());
    service->ReplyTo(ServiceMessage::IsButtonHeld, 1);
    Tick(editor);
    EXPECT_EQ(0U, debugOutput.Text().find("Key ON\n"));
    CloseEditor(editor, IDCANCEL);
}

INSTANTIATE_TEST_SUITE_P(Slots, GestureButtonTest,
                         testing::Values(ButtonMask{"lbutton", 1, "j=1\n"}, ButtonMask{"rbutton", 2, "j=2\n"},
                                         ButtonMask{"tbutton", 4, "j=4\n"}, ButtonMask{"button4", 8, "j=5\n"},
                                         ButtonMask{"button5", 16, "j=6\n"}),
                         [](const auto& test) { return std::string(test.param.element); });

TEST_F(GestureCaptureTest, OfSeveralGestureButtonsTheFirstIsAskedFor) {
    OpenWithFunctions({{"button5", "36"}, {"tbutton", "36"}, {"tiltleft", "36"}});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    Tick(editor);
    EXPECT_EQ(4, service->Calls().back().lParam);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureCaptureTest, ATiltOpensTheEditorButRecordsNothing) {
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

TEST_F(GestureCaptureTest, TheFieldFollowsTheStroke) {
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

TEST_F(GestureCaptureTest, AnEmptyStrokeEmptiesTheField) {
    OpenWith({{"U", 3, "", ""}});
    SelectRow(0);
    const HWND editor = OpenEditor(IDC_GESTURES_EDIT);
    Record(editor, "");
    EXPECT_EQ(L"", Stroke(editor));
    ExpectOkIgnored(editor);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureCaptureTest, EachRecordingNeedsAClick) {
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

TEST_F(GestureCaptureTest, ClicksDuringARecordingDoNothing) {
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

TEST_F(GestureCaptureTest, TheRightButtonGivesTheStrokeUp) {
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

TEST_F(GestureCaptureTest, TheRightButtonBeforeAStrokeHasNoEffect) {
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

TEST_F(GestureCaptureTest, WithoutTheServiceNothingStarts) {
    OpenWith({});
    const HWND editor = OpenEditor();
    service.reset();
    ClickStroke(editor);
    for (int i = 0; i < 3; ++i) Tick(editor);
    EXPECT_EQ(L"Start", Stroke(editor));
    EXPECT_EQ(nullptr, OverlayOf(editor));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureCaptureTest, AServiceThatVanishesEndsTheStroke) {
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

TEST_F(GestureCaptureTest, TheOverlayCoversTheScreenWhileAStrokeIsDrawn) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    Tick(editor);
    EXPECT_EQ(nullptr, OverlayOf(editor));
    HoldGestureButton(editor);
    const HWND overlay = OverlayOf(editor);
    ASSERT_NE(nullptr, overlay);
    EXPECT_TRUE(IsWindowVisible(overlay));
    EXPECT_EQ(WS_EX_LAYERED | WS_EX_TOPMOST, GetWindowLongW(overlay, GWL_EXSTYLE));
    EXPECT_EQ(L"", TitleOf(overlay));
    RECT area{};
    GetWindowRect(overlay, &area);
    EXPECT_TRUE(area.left <= 0 && area.top <= 0 && area.right >= GetSystemMetrics(SM_CXSCREEN) &&
                area.bottom >= GetSystemMetrics(SM_CYSCREEN));
    COLORREF key = 0;
    BYTE alpha = 1;
    DWORD flags = 0;
    ASSERT_TRUE(GetLayeredWindowAttributes(overlay, &key, &alpha, &flags));
    EXPECT_EQ(RGB(5, 0, 0), key);
    EXPECT_EQ(0, alpha);
    EXPECT_EQ(static_cast<DWORD>(LWA_COLORKEY), flags);
    Draw(editor, "R");
    EXPECT_EQ(overlay, OverlayOf(editor));
    ReleaseGestureButton(editor);
    EXPECT_FALSE(IsWindow(overlay));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureCaptureTest, TheTrailIsAGreenLineOnTransparentGround) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    HoldGestureButton(editor);
    const HWND overlay = OverlayOf(editor);
    POINT from{};
    GetCursorPos(&from);
    sheet->Run([=] { RedrawWindow(overlay, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ERASENOW); });
    RECT area{};
    GetClientRect(overlay, &area);
    for (const POINT corner : {POINT{0, 0}, POINT{area.right - 1, 0}, POINT{area.right - 1, area.bottom - 1}}) {
        EXPECT_EQ(RGB(5, 0, 0), PixelOf(overlay, corner.x, corner.y));
    }
    Tick(editor);
    EXPECT_EQ(RGB(5, 0, 0), PixelOf(overlay, from.x, from.y));
    Draw(editor, "RD");
    constexpr COLORREF kGreen = RGB(0, 255, 0);
    for (const POINT place : {POINT{0, 0}, POINT{90, 1}, POINT{90, -1}, POINT{180, 60}, POINT{180, 170}}) {
        EXPECT_EQ(kGreen, PixelOf(overlay, from.x + place.x, from.y + place.y)) << place.x << ' ' << place.y;
    }
    for (const POINT place : {POINT{90, 2}, POINT{90, -2}, POINT{-5, 0}, POINT{180, 190}, POINT{90, 90}}) {
        EXPECT_EQ(RGB(5, 0, 0), PixelOf(overlay, from.x + place.x, from.y + place.y)) << place.x << ' ' << place.y;
    }
    ReleaseGestureButton(editor);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureCaptureTest, WithoutAnOverlayTheStrokeIsStillRecognised) {
    OpenWith({});
    const HWND editor = OpenEditor();
    const ReplacedImport<"CreateDialogParamW", HWND(HINSTANCE, LPCWSTR, HWND, DLGPROC, LPARAM)> none(
        module.Handle(), [](HINSTANCE, LPCWSTR, HWND, DLGPROC, LPARAM) { return HWND{}; });
    ASSERT_TRUE(none.IsInPlace());
    ClickStroke(editor);
    HoldGestureButton(editor);
    EXPECT_EQ(nullptr, OverlayOf(editor));
    Draw(editor, "UR");
    ReleaseGestureButton(editor);
    EXPECT_EQ(L"UR", Stroke(editor));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureCaptureTest, AClosedOverlayIsOnlyMissing) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    HoldGestureButton(editor);
    SendMessageW(OverlayOf(editor), WM_CLOSE, 0, 0);
    EXPECT_EQ(nullptr, OverlayOf(editor));
    Draw(editor, "L");
    ReleaseGestureButton(editor);
    EXPECT_EQ(L"L", Stroke(editor));
    ClickStroke(editor);
    HoldGestureButton(editor);
    EXPECT_NE(nullptr, OverlayOf(editor));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureCaptureTest, AnyMessageWithTheEndingParameterHidesTheOverlay) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    HoldGestureButton(editor);
    const HWND overlay = OverlayOf(editor);
    SendMessageW(overlay, WM_USER, 0, 8);
    EXPECT_TRUE(IsWindowVisible(overlay));
    SendMessageW(overlay, WM_USER, 0, 9);
    EXPECT_FALSE(IsWindowVisible(overlay));
    ReleaseGestureButton(editor);
    EXPECT_FALSE(IsWindow(overlay));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureCaptureTest, AnEditorClosedInMidStrokeLeavesNothingBehind) {
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

TEST_F(GestureCaptureTest, TheSheetClosesBehindAStrokeThatWasGivenUp) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    HoldGestureButton(editor);
    CloseEditor(editor, IDCANCEL);
    Close();
    EXPECT_EQ(S_OK, module.CanUnloadNow());
}

}  // namespace
}  // namespace kvn::test
