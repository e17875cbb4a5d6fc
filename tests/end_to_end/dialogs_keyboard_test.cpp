// The gestures and every dialog without a mouse: Tab reaches each control that takes the focus, each has a name for
// screen readers, and each works with keys. Only the stroke of a gesture needs the mouse, since its field begins to
// record at a click.
#include <windows.h>

#include <commctrl.h>

#include "resources/resource.h"
#include "tests/end_to_end/gesture_story.h"
#include "tests/end_to_end/key_dialog_driver.h"
#include "tests/end_to_end/profile_story.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/support/narrow_text.h"

namespace kvn::end_to_end {
namespace {

using Names = std::vector<std::string>;

// A screen reader's name for a control: the text of a button or of the list of gestures, else that of the label
// directly before the control. The field of a combo box has the combo box's name.
std::string NameOf(HWND control) {
    const std::wstring className = ClassOf(control);
    if (const HWND parent = GetParent(control); ClassOf(parent) == L"ComboBox") return NameOf(parent);
    if (className == L"Button" || className == WC_LISTVIEWW) {
        if (const std::wstring own = TextOf(control); !own.empty()) return test::Narrow(own);
    }
    const HWND label = GetWindow(control, GW_HWNDPREV);
    return label == nullptr ? std::string() : test::Narrow(TextOf(label));
}

void PressTab(HWND dialog) {
    const HWND before = FocusOf(dialog);
    PressKey(VK_TAB);
    WaitFor("the focus to leave " + Describe(before), [&] {
        const HWND now = FocusOf(dialog);
        return now != nullptr && now != before;
    });
    // A combo box passes the focus on to its field. The answer to this message comes after that.
    Send(dialog, WM_NULL);
}

// Presses Tab until the focus is on the control with this name.
void MoveTo(HWND dialog, const std::string& name) {
    constexpr int kLongestWay = 12;
    for (int step = 0; NameOf(FocusOf(dialog)) != name; ++step) {
        if (step == kLongestWay) throw StoryError("Tab does not lead to \"" + name + '"');
        PressTab(dialog);
    }
}

// The same, by the control's id.
void MoveTo(HWND dialog, int control) {
    constexpr int kLongestWay = 12;
    for (int step = 0; GetDlgCtrlID(FocusOf(dialog)) != control; ++step) {
        if (step == kLongestWay) throw StoryError("Tab does not lead to control " + std::to_string(control));
        PressTab(dialog);
    }
}

// The names of all controls that Tab reaches, beginning with the one that has the focus.
Names Ring(HWND dialog) {
    const HWND first = FocusOf(dialog);
    Names names;
    do {
        names.push_back(NameOf(FocusOf(dialog)));
        PressTab(dialog);
    } while (FocusOf(dialog) != first);
    return names;
}

class GestureKeysTest : public GestureStory {
protected:
    void SetUp() override {
        EndToEndTest::SetUp();
        WriteFileBytes(ProfileFile(), ProfileFileText({WheelProfile({{"U", "3", "back", ""}, {"D", "4", "", ""}})}));
    }
    // From the page's tabs, where the focus is when the sheet opens.
    static void OpenTab(const Sheet& sheet) {
        PressKey(VK_RIGHT);
        WaitFor("the gestures", [&] { return IsWindowVisible(sheet.GesturePane()) != FALSE; });
        // After the editor's OK, a click follows wherever the cursor is.
        MoveCursorTo(MiddleOf(ScreenRectangle(GetWindow(sheet.Control(IDC_PAGE_PROFILE), GW_HWNDPREV))));
    }
    static void SelectFirstRow(const Sheet& sheet) {
        MoveTo(sheet.Window(), "Gesture");
        PressKey(VK_DOWN);
        PressKey(VK_HOME);
        WaitFor("the selection", [&] { return Rows(sheet).SelectedRows() == std::vector<int>{0}; });
    }
    static GestureEditor EditFirstRow(const Sheet& sheet) {
        OpenTab(sheet);
        SelectFirstRow(sheet);
        MoveTo(sheet.Window(), "Edit");
        PressKey(VK_SPACE);
        return GestureEditor(sheet.ProcessId());
    }
    static ListDriver Rows(const Sheet& sheet) {
        return ListDriver(GetDlgItem(sheet.GesturePane(), IDC_GESTURES_LIST));
    }
    void Close(const Sheet& sheet) const {
        sheet.Close(IDCANCEL);
        EXPECT_EQ(HostExitCode(), 0U);
    }
};

TEST_F(GestureKeysTest, TabVisitsTheListAndTheButtonsThatCanBeUsed) {
    const Sheet sheet = OpenSheetWithService();
    OpenTab(sheet);
    MoveTo(sheet.Window(), "Profile");
    PressTab(sheet.Window());
    EXPECT_EQ(NameOf(FocusOf(sheet.Window())), "Edit Profile");
    PressTab(sheet.Window());
    EXPECT_EQ(NameOf(FocusOf(sheet.Window())), "Gesture");
    PressTab(sheet.Window());
    EXPECT_EQ(NameOf(FocusOf(sheet.Window())), "Add");
    PressTab(sheet.Window());
    EXPECT_EQ(sheet.Focused(), IDC_PAGE_TAB);

    SelectFirstRow(sheet);
    for (const char* name : {"Add", "Delete", "Edit"}) {
        PressTab(sheet.Window());
        EXPECT_EQ(NameOf(FocusOf(sheet.Window())), name);
    }
    Close(sheet);
}

TEST_F(GestureKeysTest, EditorWorksWithKeys) {
    const Sheet sheet = OpenSheetWithService();
    const GestureEditor editor = EditFirstRow(sheet);
    EXPECT_EQ(Ring(editor.Window()), (Names{"Functions", "Instructions", "OK", "Cancel"}));
    PressKey(VK_DOWN);
    WaitFor("the next function", [&] { return editor.Function() == "Forward (Internet Explorer)"; });
    MoveTo(editor.Window(), "Instructions");
    TypeText(L"on");
    WaitFor("the note", [&] { return editor.Memo() == "on"; });
    PressKey(VK_RETURN);
    editor.WaitUntilClosed();
    WaitFor("the row", [&] {
        return Rows(sheet).Rows<3>()[0] == GestureRow{"U", "Forward (Internet Explorer)", "on"};
    });
    Close(sheet);
}

TEST_F(GestureKeysTest, KeyDialogWorksWithKeys) {
    const Sheet sheet = OpenSheetWithService();
    const GestureEditor editor = EditFirstRow(sheet);
    PressKey(VK_END);  // "Arbitrary key", which opens the dialog
    const KeyDialog keys(sheet.ProcessId());
    EXPECT_EQ(Ring(keys.Window()), (Names{"Input 1:", "Input 2:", "Input 3:", "Clear", "OK", "Cancel"}));
    keys.Press(IDC_KEYS_INPUT1, 'A', L"A");
    MoveTo(keys.Window(), "Clear");
    PressKey(VK_SPACE);
    keys.Expect(IDC_KEYS_INPUT1, L"Enter key");
    MoveTo(keys.Window(), "Input 1:");
    keys.Press(IDC_KEYS_INPUT1, 'B', L"B");
    MoveTo(keys.Window(), "OK");
    PressKey(VK_SPACE);
    keys.WaitUntilClosed();
    WaitFor("the key in the editor", [&] { return editor.Function() == "Arbitrary key[B]"; });
    PressKey(VK_ESCAPE);
    editor.WaitUntilClosed();
    Close(sheet);
}

class ProfileEditorKeysTest : public ProfileStory {
protected:
    std::vector<ProfileText> StoredProfiles() const override { return {{}, {"Painting"}}; }

    static ProfileEditor OpenEditorByKeys(const Sheet& sheet) {
        sheet.MoveFocusTo(IDC_PAGE_EDIT_PROFILE);
        PressKey(VK_SPACE);
        return ProfileEditor(sheet.ProcessId());
    }
};

TEST_F(ProfileEditorKeysTest, TabVisitsEveryControlThatCanBeUsedAndEachHasItsName) {
    const Sheet sheet = OpenSheetWithService();
    const ProfileEditor editor = OpenEditorByKeys(sheet);
    EXPECT_EQ(Ring(editor.Window()), (Names{"Profile", "Add", "Allocation program", "Add", "OK", "Cancel"}));
    PressKey(VK_END);
    WaitFor("the selection", [&] { return editor.SelectedProfiles() == std::vector<int>{1}; });
    EXPECT_EQ(Ring(editor.Window()),
              (Names{"Profile", "Add", "Delete", "Change name", "Copy", "Allocation program", "Add", "OK", "Cancel"}));
    PressKey(VK_ESCAPE);
    editor.WaitUntilClosed();
    EXPECT_EQ(sheet.Focused(), IDC_PAGE_EDIT_PROFILE);
    Close(sheet, IDCANCEL);
}

TEST_F(ProfileEditorKeysTest, ProfileIsAddedRenamedAndGivenAProgram) {
    const Sheet sheet = OpenSheetWithService();
    const ProfileEditor editor = OpenEditorByKeys(sheet);
    MoveTo(editor.Window(), IDC_PROFILES_ADD);
    PressKey(VK_SPACE);
    const NameDialog added(sheet.ProcessId(), L"Add profile");
    added.Type(L"Racing");
    added.CloseWith(VK_RETURN);
    editor.ExpectProfiles({"Default", "Painting", "Racing"});

    MoveTo(editor.Window(), IDC_PROFILES_LIST);
    PressKey(VK_END);
    WaitFor("the new profile", [&] { return editor.SelectedProfiles() == std::vector<int>{2}; });
    MoveTo(editor.Window(), IDC_PROFILES_RENAME);
    PressKey(VK_SPACE);
    const NameDialog renamed(sheet.ProcessId(), L"Change profile name");
    EXPECT_EQ(renamed.Name(), "Racing");
    renamed.Type(L"Driving");
    renamed.CloseWith(VK_RETURN);
    editor.ExpectProfiles({"Default", "Painting", "Driving"});

    MoveTo(editor.Window(), IDC_PROFILES_ADD_PROGRAM);
    PressKey(VK_SPACE);
    const ProgramSelection selection(sheet.ProcessId());
    // The list goes to the row that begins with the typed letter.
    PressKey('Z');
    WaitFor("the typed row", [&] { return selection.SelectedRows() == std::vector<int>{selection.RowOf(Easel())}; });
    PressKey(VK_DOWN);
    WaitFor("the next row", [&] { return selection.SelectedRows() == std::vector<int>{selection.RowOf(Racing())}; });
    PressKey(VK_RETURN);
    selection.WaitUntilClosed();
    editor.ExpectPrograms({Racing()});

    MoveTo(editor.Window(), IDOK);
    PressKey(VK_RETURN);
    editor.WaitUntilClosed();
    ExpectPage(sheet, {"Default", "Painting", "Driving"}, L"Default");
    ExpectStored({{}, {"Painting"}, {"Driving", {}, {}, {InFile(Racing())}}}, 0, {});
    Close(sheet, IDCANCEL);
}

TEST_F(ProfileEditorKeysTest, WindowOnTheScreenIsChosenByKeys) {
    StartNotepad();
    const Sheet sheet = OpenSheetWithService();
    const ProfileEditor editor = OpenEditorByKeys(sheet);
    PressKey(VK_END);
    WaitFor("the selection", [&] { return editor.SelectedProfiles() == std::vector<int>{1}; });
    MoveTo(editor.Window(), IDC_PROFILES_ADD_PROGRAM);
    PressKey(VK_SPACE);
    const ProgramSelection selection(sheet.ProcessId());
    EXPECT_EQ(Ring(selection.Window()), (Names{"Program", "Select window", "Reference", "OK", "Cancel"}));
    MoveTo(selection.Window(), "Select window");
    PressKey(VK_SPACE);
    const WindowProgram window(sheet.ProcessId());
    window.WaitForFocus(IDOK);
    EXPECT_EQ(Ring(window.Window()), (Names{"OK", "Cancel"}));
    EXPECT_EQ(window.Path(), Notepad()[1]);
    PressKey(VK_RETURN);
    selection.WaitUntilClosed();
    editor.ExpectPrograms({Notepad()});
    PressKey(VK_ESCAPE);
    editor.WaitUntilClosed();
    Close(sheet, IDCANCEL);
}

}  // namespace
}  // namespace kvn::end_to_end
