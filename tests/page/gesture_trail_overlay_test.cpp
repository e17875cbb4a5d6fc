// The green line over the screen while a stroke is drawn.
#include "platform/device_context.h"
#include "tests/support/gesture_fixture.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

class GestureTrailOverlayTest : public GestureTest {
protected:
    // Opens the editor, holds the button, and returns the overlay of the stroke.
    HWND BeginStroke() {
        OpenWith({});
        editor = OpenEditor();
        ClickStroke(editor);
        HoldGestureButton(editor);
        return OverlayOf(editor);
    }
    void EndStroke() {
        ReleaseGestureButton(editor);
        CloseEditor(editor, IDCANCEL);
    }
    COLORREF PixelOf(HWND overlay, int x, int y) const {
        COLORREF colour = 0;
        sheet->Run([&] { colour = GetPixel(platform::WindowDeviceContext(overlay).Get(), x, y); });
        return colour;
    }
    // Makes Windows erase and paint the whole window, as when it is uncovered or invalidated.
    void Repaint(HWND overlay) const {
        sheet->Run([=] { RedrawWindow(overlay, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW); });
    }
    // The answer of the overlay's dialog procedure itself.
    INT_PTR AskProcedure(HWND overlay, UINT message, LPARAM lParam = 0) const {
        INT_PTR answer = -1;
        sheet->Run([&] {
            const auto procedure = reinterpret_cast<DLGPROC>(GetWindowLongPtrW(overlay, DWLP_DLGPROC));
            answer = procedure(overlay, message, 0, lParam);
        });
        return answer;
    }
    void ExpectTrail(HWND overlay, POINT from, const std::vector<POINT>& places) const {
        for (const POINT place : places) {
            EXPECT_EQ(PixelOf(overlay, from.x + place.x, from.y + place.y), RGB(0, 255, 0))
                << place.x << ' ' << place.y;
        }
    }

    HWND editor = nullptr;
};

TEST_F(GestureTrailOverlayTest, TheOverlayCoversTheScreenWhileAStrokeIsDrawn) {
    OpenWith({});
    editor = OpenEditor();
    ClickStroke(editor);
    Tick(editor);
    EXPECT_EQ(OverlayOf(editor), nullptr);
    HoldGestureButton(editor);
    const HWND overlay = OverlayOf(editor);
    ASSERT_NE(overlay, nullptr);
    EXPECT_TRUE(IsWindowVisible(overlay));
    EXPECT_EQ(GetWindow(overlay, GW_OWNER), editor);
    EXPECT_EQ(GetWindowLongW(overlay, GWL_EXSTYLE), WS_EX_LAYERED | WS_EX_TOPMOST);
    EXPECT_EQ(TitleOf(overlay), L"");
    RECT area{};
    GetWindowRect(overlay, &area);
    EXPECT_TRUE(area.left <= 0 && area.top <= 0 && area.right >= GetSystemMetrics(SM_CXSCREEN) &&
                area.bottom >= GetSystemMetrics(SM_CYSCREEN));
    COLORREF key = 0;
    BYTE alpha = 1;
    DWORD flags = 0;
    ASSERT_TRUE(GetLayeredWindowAttributes(overlay, &key, &alpha, &flags));
    EXPECT_EQ(key, RGB(5, 0, 0));
    EXPECT_EQ(alpha, 0);
    EXPECT_EQ(flags, static_cast<DWORD>(LWA_COLORKEY));
    Draw(editor, "R");
    EXPECT_EQ(OverlayOf(editor), overlay);
    ReleaseGestureButton(editor);
    EXPECT_FALSE(IsWindow(overlay));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureTrailOverlayTest, TheTrailIsAGreenLineOnTransparentGround) {
    const HWND overlay = BeginStroke();
    POINT from{};
    GetCursorPos(&from);
    sheet->Run([=] { RedrawWindow(overlay, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ERASENOW); });
    RECT area{};
    GetClientRect(overlay, &area);
    for (const POINT corner : {POINT{0, 0}, POINT{area.right - 1, 0}, POINT{area.right - 1, area.bottom - 1}}) {
        EXPECT_EQ(PixelOf(overlay, corner.x, corner.y), RGB(5, 0, 0));
    }
    Tick(editor);
    EXPECT_EQ(PixelOf(overlay, from.x, from.y), RGB(5, 0, 0));
    Draw(editor, "RD");
    constexpr COLORREF kGreen = RGB(0, 255, 0);
    for (const POINT place : {POINT{0, 0}, POINT{90, 1}, POINT{90, -1}, POINT{180, 60}, POINT{180, 170}}) {
        EXPECT_EQ(PixelOf(overlay, from.x + place.x, from.y + place.y), kGreen) << place.x << ' ' << place.y;
    }
    for (const POINT place : {POINT{90, 2}, POINT{90, -2}, POINT{-5, 0}, POINT{180, 190}, POINT{90, 90}}) {
        EXPECT_EQ(PixelOf(overlay, from.x + place.x, from.y + place.y), RGB(5, 0, 0)) << place.x << ' ' << place.y;
    }
    EndStroke();
}

TEST_F(GestureTrailOverlayTest, TheTrailSurvivesARepaint) {
    const HWND overlay = BeginStroke();
    POINT from{};
    GetCursorPos(&from);
    Draw(editor, "RD");
    Repaint(overlay);
    ExpectTrail(overlay, from, {{0, 0}, {90, 0}, {180, 60}, {180, 170}});
    Draw(editor, "L");
    Repaint(overlay);
    ExpectTrail(overlay, from, {{90, 0}, {180, 60}, {90, 180}});
    EXPECT_EQ(PixelOf(overlay, from.x + 90, from.y + 90), RGB(5, 0, 0));
    EndStroke();
}

TEST_F(GestureTrailOverlayTest, ANewStrokeShowsNothingOfTheLastOne) {
    OpenWith({});
    editor = OpenEditor();
    POINT from{};
    ClickStroke(editor);
    HoldGestureButton(editor);
    GetCursorPos(&from);
    Draw(editor, "R");
    ReleaseGestureButton(editor);
    ClickStroke(editor);
    HoldGestureButton(editor);
    const HWND overlay = OverlayOf(editor);
    Draw(editor, "D");
    Repaint(overlay);
    EXPECT_EQ(PixelOf(overlay, from.x + 90, from.y), RGB(5, 0, 0));
    ExpectTrail(overlay, from, {{0, 90}});
    EndStroke();
}

TEST_F(GestureTrailOverlayTest, WithoutAnOverlayTheStrokeIsStillRecognised) {
    OpenWith({});
    editor = OpenEditor();
    const ReplacedImport<"CreateDialogParamW", HWND(HINSTANCE, LPCWSTR, HWND, DLGPROC, LPARAM)> none(
        module.Handle(), [](HINSTANCE, LPCWSTR, HWND, DLGPROC, LPARAM) { return HWND{}; });
    ASSERT_TRUE(none.IsInPlace());
    ClickStroke(editor);
    HoldGestureButton(editor);
    EXPECT_EQ(OverlayOf(editor), nullptr);
    Draw(editor, "UR");
    ReleaseGestureButton(editor);
    EXPECT_EQ(Stroke(editor), L"UR");
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureTrailOverlayTest, AnswersWhatItHandlesWithOne) {
    const HWND overlay = BeginStroke();
    EXPECT_EQ(AskProcedure(overlay, WM_INITDIALOG), 1);
    EXPECT_EQ(AskProcedure(overlay, WM_ERASEBKGND), 1);
    EXPECT_EQ(AskProcedure(overlay, WM_USER), 0);
    EXPECT_EQ(AskProcedure(overlay, WM_USER, 9), 1);
    EXPECT_EQ(AskProcedure(overlay, WM_USER, 0x7'0000'0009), 1) << "only the low half counts";
    EndStroke();
}

TEST_F(GestureTrailOverlayTest, WithoutADrawingContextTheStrokeIsStillRecognised) {
    BeginStroke();
    {
        const ReplacedImport<"GetDC", decltype(GetDC)> none(module.Handle(), [](HWND) { return HDC{}; });
        ASSERT_TRUE(none.IsInPlace());
        EXPECT_EQ(AskProcedure(OverlayOf(editor), WM_ERASEBKGND), 1);
        Draw(editor, "UR");
    }
    ReleaseGestureButton(editor);
    EXPECT_EQ(Stroke(editor), L"UR");
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureTrailOverlayTest, AClosedOverlayIsOnlyMissing) {
    BeginStroke();
    SendMessageW(OverlayOf(editor), WM_CLOSE, 0, 0);
    EXPECT_EQ(OverlayOf(editor), nullptr);
    Draw(editor, "L");
    ReleaseGestureButton(editor);
    EXPECT_EQ(Stroke(editor), L"L");
    ClickStroke(editor);
    HoldGestureButton(editor);
    EXPECT_NE(OverlayOf(editor), nullptr);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureTrailOverlayTest, AnyMessageWithTheEndingParameterHidesTheOverlay) {
    const HWND overlay = BeginStroke();
    SendMessageW(overlay, WM_USER, 0, 8);
    EXPECT_TRUE(IsWindowVisible(overlay));
    SendMessageW(overlay, WM_USER, 0, 9);
    EXPECT_FALSE(IsWindowVisible(overlay));
    ReleaseGestureButton(editor);
    EXPECT_FALSE(IsWindow(overlay));
    CloseEditor(editor, IDCANCEL);
}

}  // namespace
}  // namespace kvn::test
