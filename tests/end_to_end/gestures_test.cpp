// The gestures of a profile, drawn with the real mouse: while they are drawn, listed, edited, and what is stored of
// them.
#include "resources/resource.h"
#include "tests/end_to_end/gesture_story.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/support/function_codes.h"

namespace kvn::end_to_end {
namespace {

using enum test::Function;

using Rows = std::vector<GestureRow>;

class RecordingGesturesTest : public GestureStory {
protected:
    static void WaitForRows(const GestureList& list, const Rows& rows) {
        WaitFor("the rows", [&] { return list.Rows().size() == rows.size(); });
        EXPECT_EQ(list.Rows(), rows);
    }
    static void ExpectOkIsIgnored(const GestureEditor& editor) {
        editor.Click(IDOK);
        // A later click, which is taken later: the dialog is still there to do so.
        editor.TypeMemo("");
    }
    // Closes the sheet and opens it again; shows what the list says then.
    Rows RowsAfterReopening(const Sheet& sheet) {
        sheet.Close(IDOK);
        EXPECT_EQ(HostExitCode(), 0U);
        const Sheet reopened = OpenSheet();
        Rows rows = GestureList(reopened).Rows();
        reopened.Close(IDCANCEL);
        EXPECT_EQ(HostExitCode(), 0U);
        return rows;
    }
};

TEST_F(RecordingGesturesTest, RecordedStrokeIsListedWrittenSavedAndReadBack) {
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    EXPECT_FALSE(list.IsEnabled(IDC_GESTURES_EDIT));
    EXPECT_FALSE(list.IsEnabled(IDC_GESTURES_DELETE));
    const GestureEditor editor = OpenEditor(sheet, list, IDC_GESTURES_ADD);
    Record(editor, "UR");
    editor.ChooseFunction(kCloseWindow);
    editor.TypeMemo("CLOSE 2");
    editor.CloseWith(IDOK);

    WaitForRows(list, {{"UR", "Close the window", "close 2"}});
    EXPECT_EQ(ModelValues(), RegistryValues());
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({WheelProfile()}));
    sheet.Apply();
    EXPECT_EQ(ModelValues(), (RegistryValues{{"Gesture", TextList({L"UR\t6\tclose 2\t"})}}));
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({WheelProfile({{"UR", "6", "close 2", ""}})}));
    EXPECT_EQ(RowsAfterReopening(sheet), (Rows{{"UR", "Close the window", "close 2"}}));
}

TEST_F(RecordingGesturesTest, EveryDirectionIsShownWhenItIsFixedAndTheLastFourStay) {
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

TEST_F(RecordingGesturesTest, RightButtonGivesAStrokeUp) {
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

TEST_F(RecordingGesturesTest, DoubleClickEditsTheRow) {
    const std::vector<GestureText> stored{{"U", "8", "down with it", ""}, {"DR", "37", "new", "Left Ctrl+N"}};
    WriteFileBytes(ProfileFile(), ProfileFileText({WheelProfile(stored)}));
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    list.DoubleClick(1);
    const GestureEditor editor(sheet.ProcessId());
    EXPECT_EQ(editor.Stroke(), "DR");
    EXPECT_EQ(editor.Function(), "Arbitrary key[Left Ctrl+N]");
    EXPECT_EQ(editor.Memo(), "new");
    // Another row's stroke is accepted here.
    Record(editor, "U");
    editor.ChooseFunction(kPaste);
    editor.TypeMemo("ER");
    EXPECT_EQ(editor.Memo(), "newer");
    editor.CloseWith(IDOK);

    WaitFor("the edited row", [&] { return list.Rows()[1] == GestureRow{"U", "Ctrl + V", "newer"}; });
    sheet.Apply();
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({WheelProfile({stored[0], {"U", "12", "newer", ""}})}));
    sheet.Close(IDOK);
    EXPECT_EQ(HostExitCode(), 0U);
}

}  // namespace
}  // namespace kvn::end_to_end
