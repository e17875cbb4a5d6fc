// Strokes while they are drawn: what the page asks the service, what the editor shows, and the trail on the screen.
#include <algorithm>

#include "resources/resource.h"
#include "tests/end_to_end/gesture_story.h"
#include "tests/end_to_end/pixels.h"
#include "tests/end_to_end/waiting.h"
#include "tests/end_to_end/windows_of_process.h"

namespace kvn::end_to_end {
namespace {

constexpr int kCloseWindow = 6;
constexpr LONG kLayeredTopmost = WS_EX_LAYERED | WS_EX_TOPMOST;
constexpr COLORREF kTransparent = RGB(5, 0, 0);
constexpr COLORREF kTrailColour = RGB(0, 255, 0);

class Strokes : public GestureStory {
protected:
    static void ExpectOkIsIgnored(const GestureEditor& editor) {
        editor.Click(IDOK);
        // A later click, which is taken later: the dialog is still there to do so.
        editor.TypeMemo("");
    }
};

TEST_F(Strokes, EveryDirectionIsShownWhenItIsFixedAndTheLastFourStay) {
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    const GestureEditor editor = OpenEditor(sheet, list, IDC_GESTURES_ADD);
    BeginStroke(editor);
    EXPECT_EQ(editor.Stroke(), "Start");
    std::string drawn;
    for (const char letter : std::string("RULD")) {
        DrawLetter(letter);
        editor.ExpectStroke(drawn += letter);
    }
    DrawLetter('R');
    editor.ExpectStroke("ULDR");
    EndStroke(editor);
    editor.ExpectStroke("ULDR");
    editor.CloseWith(IDCANCEL);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(Strokes, RightButtonGivesAStrokeUp) {
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    const GestureEditor editor = OpenEditor(sheet, list, IDC_GESTURES_ADD);
    editor.ChooseFunction(kCloseWindow);
    BeginStroke(editor);
    DrawLetter('R');
    editor.ExpectStroke("R");
    Hold(MouseButton::Right);
    editor.ExpectStroke("");
    EXPECT_EQ(editor.Trail(), nullptr);
    LetGo();
    EndStroke(editor);
    ExpectOkIsIgnored(editor);

    Record(editor, "DL");
    editor.CloseWith(IDOK);
    WaitFor("the row", [&] { return list.Rows() == std::vector<GestureRow>{{"DL", "Close the window", ""}}; });
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(Strokes, ServiceIsAskedOnlyWhileAStrokeIsAwaitedOrDrawn) {
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    const GestureEditor editor = OpenEditor(sheet, list, IDC_GESTURES_ADD);
    EXPECT_EQ(MessagesToService(), (std::vector<std::string>{kProbe, kEditBegin}));
    Hold(MouseButton::Wheel);
    editor.ChooseFunction(kCloseWindow);
    LetGo();
    EXPECT_EQ(QueryCount(), 0U) << "nobody has clicked the field";
    Record(editor, "R");
    const std::size_t asked = QueryCount();
    editor.TypeMemo("A");
    editor.CloseWith(IDOK);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);

    EndService();
    std::vector<std::string> messages = MessagesToService();
    EXPECT_EQ(QueryCount(), asked) << "the stroke is over";
    const auto isQuery = [](const std::string& message) { return message == kWheelHeld || message == kWheelNotHeld; };
    EXPECT_EQ(messages[2], kWheelNotHeld);
    EXPECT_EQ(messages[messages.size() - 2], kWheelNotHeld);
    messages.erase(std::remove_if(messages.begin(), messages.end(), isQuery), messages.end());
    EXPECT_EQ(messages, (std::vector<std::string>{kProbe, kEditBegin, kEditEnd}));
}

TEST_F(Strokes, ButtonThatIsHeldWithoutAMovementMakesNoGesture) {
    const Sheet sheet = OpenSheetWithService({L"--held", L"1,1,0"});
    const GestureList list(sheet);
    const GestureEditor editor = OpenEditor(sheet, list, IDC_GESTURES_ADD);
    editor.ChooseFunction(kCloseWindow);
    editor.Click(IDC_GESTURE_STROKE);
    WaitFor("the third question", [&] { return QueryCount() >= 3; });
    editor.ExpectStroke("");
    EXPECT_EQ(editor.Trail(), nullptr);
    ExpectOkIsIgnored(editor);
    editor.CloseWith(IDCANCEL);
    EXPECT_EQ(QueryCount(), 3U) << "the stroke is over";
    EXPECT_EQ(list.Rows().size(), 0U);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(Strokes, EditorThatIsClosedInMidStrokeLeavesNoTraces) {
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    {
        const GestureEditor editor = OpenEditor(sheet, list, IDC_GESTURES_ADD);
        BeginStroke(editor);
        DrawLetter('D');
        // The trail lies above the editor, and only on Windows does it let clicks through.
        PostMessageW(editor.Window(), WM_COMMAND, IDCANCEL, 0);
        editor.WaitUntilClosed();
        EXPECT_EQ(FindTrail(sheet.ProcessId()), nullptr);
    }
    const std::size_t asked = QueryCount();
    WaitFor("the sheet in the foreground", [&] { return GetForegroundWindow() == sheet.Window(); });
    LetGo();
    const GestureEditor editor = OpenEditor(sheet, list, IDC_GESTURES_ADD);
    EXPECT_EQ(editor.Stroke(), "");
    editor.ChooseFunction(kCloseWindow);
    EXPECT_EQ(QueryCount(), asked);
    Record(editor, "RU");
    editor.CloseWith(IDOK);
    WaitFor("the row", [&] { return list.Rows() == std::vector<GestureRow>{{"RU", "Close the window", ""}}; });
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

// The rectangle that the green pixels take.
RECT TrailIn(const Pixels& pixels) {
    RECT trail{pixels.width, pixels.height, 0, 0};
    for (int y = 0, next = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x, ++next) {
            if (pixels.colours[static_cast<std::size_t>(next)] != kTrailColour) continue;
            trail = {std::min<LONG>(trail.left, x), std::min<LONG>(trail.top, y), std::max<LONG>(trail.right, x),
                     std::max<LONG>(trail.bottom, y)};
        }
    }
    return trail;
}

TEST_F(Strokes, TrailIsAGreenLineOnATransparentWindowOverTheWholeScreen) {
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    const GestureEditor editor = OpenEditor(sheet, list, IDC_GESTURES_ADD);
    BeginStroke(editor);
    const POINT start = Cursor();
    DrawLetters("DL");
    const POINT end = Cursor();

    const HWND trail = editor.Trail();
    const RECT area = ScreenRectangle(trail);
    EXPECT_EQ(area.left, 0);
    EXPECT_EQ(area.top, 0);
    EXPECT_EQ(area.right, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(area.bottom, GetSystemMetrics(SM_CYSCREEN));
    EXPECT_TRUE(IsWindowVisible(trail));
    EXPECT_EQ(GetWindowLongW(trail, GWL_EXSTYLE), kLayeredTopmost);
    EXPECT_EQ(GetWindow(trail, GW_OWNER), editor.Window());

    const Pixels pixels = PixelReader(trail).Read();
    const auto green = std::count(pixels.colours.begin(), pixels.colours.end(), kTrailColour);
    const auto transparent = std::count(pixels.colours.begin(), pixels.colours.end(), kTransparent);
    EXPECT_EQ(static_cast<std::size_t>(green + transparent), pixels.colours.size());
    // Two straight lines of three pixels' width, down and to the left.
    const RECT line = TrailIn(pixels);
    EXPECT_NEAR(line.left, end.x, 2);
    EXPECT_NEAR(line.right, start.x, 2);
    EXPECT_NEAR(line.top, start.y, 2);
    EXPECT_NEAR(line.bottom, end.y, 2);
    EXPECT_NEAR(static_cast<double>(green), 3.0 * (start.x - end.x + end.y - start.y), 20.0);

    EndStroke(editor);
    EXPECT_EQ(FindTrail(sheet.ProcessId()), nullptr);
    editor.CloseWith(IDCANCEL);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

}  // namespace
}  // namespace kvn::end_to_end
