// The gestures of a profile: recorded, listed, edited, deleted, and what is stored of them.
#include "resources/resource.h"
#include "tests/end_to_end/gesture_story.h"
#include "tests/end_to_end/key_dialog.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/waiting.h"
#include "tests/end_to_end/windows_of_process.h"

namespace kvn::end_to_end {
namespace {

constexpr int kCloseWindow = 6;
constexpr int kPaste = 12;
constexpr int kGestureFunction = 36;
constexpr int kArbitraryKey = 37;

using Rows = std::vector<GestureRow>;

class Gestures : public GestureStory {
protected:
    static void WaitForRows(const GestureList& list, const Rows& rows) {
        WaitFor("the rows", [&] { return list.Rows().size() == rows.size(); });
        EXPECT_EQ(list.Rows(), rows);
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

TEST_F(Gestures, RecordedStrokeIsListedWrittenSavedAndReadBack) {
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

TEST_F(Gestures, FunctionThatWasJustGivenToAButtonCounts) {
    WriteFileBytes(ProfileFile(), ProfileFileText({{}}));
    const Sheet sheet = OpenSheetWithService();
    sheet.ChooseByMouse(IDC_PANE_BUTTON5, kGestureFunction);
    const GestureList list(sheet);
    const GestureEditor editor = OpenEditor(sheet, list, IDC_GESTURES_ADD);
    Record(editor, "L", MouseButton::Button5);
    // By keys: the list of functions, one step down from nothing.
    PressKey(VK_DOWN);
    WaitFor("the first function", [&] { return editor.Function() == "Left click"; });
    PressKey(VK_RETURN);
    editor.WaitUntilClosed();

    WaitForRows(list, {{"L", "Left click", ""}});
    sheet.Apply();
    EXPECT_EQ(ModelValues(), (RegistryValues{{"BindKeyPlus", "36"}, {"Gesture", TextList({L"L\t1\t\t"})}}));
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({{"Default", {{"button5", "36"}}, {{"L", "1", "", ""}}}}));
    sheet.Close(IDOK);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(Gestures, WithoutAButtonForThemTheEditorDoesNotOpen) {
    WriteFileBytes(ProfileFile(), ProfileFileText({{}}));
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    list.Click(IDC_GESTURES_ADD);
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDOK),
              L"To register and edit gestures, allocate gesture functions to the mouse buttons.");
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
    EXPECT_EQ(MessagesToService(), (std::vector<std::string>{kProbe}));
}

TEST_F(Gestures, KeysAreInBracketsUntilTheProfileIsShownAgain) {
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    const GestureEditor editor = OpenEditor(sheet, list, IDC_GESTURES_ADD);
    Record(editor, "D");
    editor.ChooseFunction(kArbitraryKey);
    const KeyDialog keys(sheet.ProcessId());
    keys.Press(IDC_KEYS_INPUT1, VK_LCONTROL, L"Left Ctrl");
    keys.MoveTo(IDC_KEYS_INPUT2);
    keys.Press(IDC_KEYS_INPUT2, 'V', L"V");
    keys.CloseWith(IDC_KEYS_OK);
    WaitFor("the keys in the editor", [&] { return editor.Function() == "Arbitrary key[Left Ctrl+V]"; });
    editor.CloseWith(IDOK);

    WaitForRows(list, {{"D", "Arbitrary key[Left Ctrl+V]", ""}});
    sheet.Apply();
    EXPECT_EQ(ModelValues()["Gesture"], TextList({L"D\t37\t\tLeft Ctrl+V"}));
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({WheelProfile({{"D", "37", "", "Left Ctrl+V"}})}));
    EXPECT_EQ(RowsAfterReopening(sheet), (Rows{{"D", "Left Ctrl+V", ""}}));
}

TEST_F(Gestures, StrokeThatIsTakenIsRefusedWhenAdded) {
    WriteFileBytes(ProfileFile(), ProfileFileText({WheelProfile({{"R", "10", "", ""}})}));
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    const GestureEditor editor = OpenEditor(sheet, list, IDC_GESTURES_ADD);
    Record(editor, "R");
    editor.ChooseFunction(kPaste);
    editor.Click(IDOK);
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDOK), L"This gesture is already registered.");
    Record(editor, "RD");
    editor.CloseWith(IDOK);
    WaitForRows(list, {{"R", "Ctrl + C", ""}, {"RD", "Ctrl + V", ""}});
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
    EXPECT_EQ(ModelValues(), RegistryValues());
}

class StoredGestures : public Gestures {
protected:
    void SetUp() override {
        GestureStory::SetUp();
        WriteFileBytes(ProfileFile(), ProfileFileText({WheelProfile(gestures), otherProfile}));
    }

    const std::vector<GestureText> gestures{
        {"U", "8", "down with it", ""}, {"R", "4", "", ""}, {"L", "3", "", ""}, {"DR", "37", "new", "Left Ctrl+N"}};
    const ProfileText otherProfile{"Drawing", {{"button4", "36"}}, {{"UDUD", "13", "undo", ""}}};
    const Rows rows{{"U", "Minimize the window", "down with it"},
                    {"R", "Forward (Internet Explorer)", ""},
                    {"L", "Back (Internet Explorer)", ""},
                    {"DR", "Left Ctrl+N", "new"}};
};

TEST_F(StoredGestures, SeveralAreDeletedAtOnce) {
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    EXPECT_EQ(list.Rows(), rows);
    list.Select(0);
    EXPECT_TRUE(list.IsEnabled(IDC_GESTURES_EDIT));
    list.SelectUpTo(2, 3);
    EXPECT_FALSE(list.IsEnabled(IDC_GESTURES_EDIT));
    EXPECT_TRUE(list.IsEnabled(IDC_GESTURES_DELETE));
    list.Click(IDC_GESTURES_DELETE);
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDNO), L"Are you sure you want to delete?");
    EXPECT_EQ(list.Rows(), rows);
    list.Click(IDC_GESTURES_DELETE);
    AnswerMessage(sheet.ProcessId(), IDYES);
    WaitForRows(list, {rows[3]});
    WaitFor("nothing to delete", [&] { return !list.IsEnabled(IDC_GESTURES_DELETE); });

    sheet.Apply();
    EXPECT_EQ(ModelValues(), (RegistryValues{{"Gesture", TextList({L"DR\t37\tnew\tLeft Ctrl+N"})}}));
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({WheelProfile({gestures[3]}), otherProfile}));
    EXPECT_EQ(RowsAfterReopening(sheet), Rows{rows[3]});
}

TEST_F(StoredGestures, LastOneDeletedLeavesAnEmptyValue) {
    WriteFileBytes(ProfileFile(), ProfileFileText({WheelProfile({gestures[0]})}));
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    list.Select(0);
    list.Click(IDC_GESTURES_DELETE);
    AnswerMessage(sheet.ProcessId(), IDYES);
    WaitForRows(list, {});
    sheet.Apply();
    EXPECT_EQ(ModelValues(), (RegistryValues{{"Gesture", TextList({})}}));
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({WheelProfile()}));
    EXPECT_EQ(RowsAfterReopening(sheet), Rows{});
}

TEST_F(StoredGestures, DoubleClickEditsTheRow) {
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    list.DoubleClick(3);
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

    WaitFor("the edited row", [&] { return list.Rows()[3] == GestureRow{"U", "Ctrl + V", "newer"}; });
    sheet.Apply();
    EXPECT_EQ(ReadFileBytes(ProfileFile()),
              ProfileFileText(
                  {WheelProfile({gestures[0], gestures[1], gestures[2], {"U", "12", "newer", ""}}), otherProfile}));
    sheet.Close(IDOK);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(StoredGestures, CancelledEditorLeavesTheRow) {
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    list.Select(1);
    const GestureEditor editor = OpenEditor(sheet, list, IDC_GESTURES_EDIT);
    Record(editor, "UL");
    editor.ChooseFunction(kPaste);
    editor.CloseWith(IDCANCEL);
    EXPECT_EQ(list.Rows(), rows);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(StoredGestures, ListShowsTheProfileThatIsChosen) {
    const Sheet sheet = OpenSheetWithService();
    const GestureList list(sheet);
    sheet.ChooseEntryByMouse(IDC_PAGE_PROFILE, 1);
    WaitForRows(list, {{"UDUD", "Ctrl + Z", "undo"}});
    // The stroke is drawn with this profile's button.
    const GestureEditor editor = OpenEditor(sheet, list, IDC_GESTURES_ADD);
    Record(editor, "L", MouseButton::Button4);
    editor.ChooseFunction(kCloseWindow);
    editor.CloseWith(IDOK);
    WaitForRows(list, {{"UDUD", "Ctrl + Z", "undo"}, {"L", "Close the window", ""}});

    sheet.ChooseEntryByMouse(IDC_PAGE_PROFILE, 0);
    WaitForRows(list, rows);
    sheet.Apply();
    ProfileText changed = otherProfile;
    changed.gestures.push_back({"L", "6", "", ""});
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({WheelProfile(gestures), changed}));
    sheet.Close(IDOK);
    EXPECT_EQ(HostExitCode(), 0U);
}

}  // namespace
}  // namespace kvn::end_to_end
