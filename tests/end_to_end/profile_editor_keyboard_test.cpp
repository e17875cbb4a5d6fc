// The profile editor without a mouse.
#include "resources/resource.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/profile_story.h"
#include "tests/end_to_end/waiting.h"
#include "tests/end_to_end/windows_of_process.h"

namespace kvn::end_to_end {
namespace {

using Names = std::vector<std::string>;

class ProfileEditorKeys : public ProfileStory {
protected:
    std::vector<ProfileText> StoredProfiles() const override { return {{}, {"Painting"}}; }

    // Opens the editor with the space bar.
    static ProfileEditor OpenByKeys(const Sheet& sheet) {
        sheet.MoveFocusTo(IDC_PAGE_EDIT_PROFILE);
        PressKey(VK_SPACE);
        return ProfileEditor(sheet.ProcessId());
    }
    // Tab until the focus is on a control of this id.
    static void MoveTo(const ProfileEditor& editor, int control) {
        for (int step = 0; GetDlgCtrlID(FocusOf(editor.Window())) != control; ++step) {
            if (step == 10) throw StoryError("Tab does not lead to control " + std::to_string(control));
            editor.MoveFocus();
        }
    }
    // The names of all controls that Tab leads to, beginning with the one that has the focus.
    static Names Ring(const ProfileEditor& editor) {
        const HWND first = FocusOf(editor.Window());
        Names names{editor.NameOfFocused()};
        for (std::string name = editor.MoveFocus(); FocusOf(editor.Window()) != first; name = editor.MoveFocus()) {
            names.push_back(name);
        }
        return names;
    }
};

TEST_F(ProfileEditorKeys, TabVisitsEveryControlThatCanBeUsedAndEachHasItsName) {
    const Sheet sheet = OpenSheetWithService();
    const ProfileEditor editor = OpenByKeys(sheet);
    EXPECT_EQ(Ring(editor), (Names{"Profile", "Add", "Allocation program", "Add", "OK", "Cancel"}));
    PressKey(VK_END);
    WaitFor("the selection", [&] { return editor.SelectedProfiles() == std::vector<int>{1}; });
    EXPECT_EQ(Ring(editor),
              (Names{"Profile", "Add", "Delete", "Change name", "Copy", "Allocation program", "Add", "OK", "Cancel"}));
    PressKey(VK_ESCAPE);
    editor.WaitUntilClosed();
    EXPECT_EQ(sheet.Focused(), IDC_PAGE_EDIT_PROFILE);
    Close(sheet, IDCANCEL);
}

TEST_F(ProfileEditorKeys, ProfileIsAddedRenamedAndGivenAProgram) {
    const Sheet sheet = OpenSheetWithService();
    const ProfileEditor editor = OpenByKeys(sheet);
    MoveTo(editor, IDC_PROFILES_ADD);
    PressKey(VK_SPACE);
    const NameDialog added(sheet.ProcessId(), L"Add profile");
    added.Type(L"Racing");
    added.CloseWith(VK_RETURN);
    editor.ExpectProfiles({"Default", "Painting", "Racing"});

    MoveTo(editor, IDC_PROFILES_LIST);
    PressKey(VK_END);
    WaitFor("the new profile", [&] { return editor.SelectedProfiles() == std::vector<int>{2}; });
    MoveTo(editor, IDC_PROFILES_RENAME);
    PressKey(VK_SPACE);
    const NameDialog renamed(sheet.ProcessId(), L"Change profile name");
    EXPECT_EQ(renamed.Name(), "Racing");
    renamed.Type(L"Driving");
    renamed.CloseWith(VK_RETURN);
    editor.ExpectProfiles({"Default", "Painting", "Driving"});

    MoveTo(editor, IDC_PROFILES_ADD_PROGRAM);
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

    MoveTo(editor, IDOK);
    PressKey(VK_RETURN);
    editor.WaitUntilClosed();
    ExpectPage(sheet, {"Default", "Painting", "Driving"}, L"Default");
    ExpectStored({{}, {"Painting"}, {"Driving", {}, {}, {InFile(Racing())}}}, 0, {});
    Close(sheet, IDCANCEL);
}

TEST_F(ProfileEditorKeys, ProfileIsDeletedAfterYes) {
    const Sheet sheet = OpenSheetWithService();
    const ProfileEditor editor = OpenByKeys(sheet);
    PressKey(VK_END);
    WaitFor("the selection", [&] { return editor.SelectedProfiles() == std::vector<int>{1}; });
    MoveTo(editor, IDC_PROFILES_DELETE);
    PressKey(VK_SPACE);
    const Dialog question(sheet.ProcessId(), kMessageTitle);
    EXPECT_EQ(question.Message(), L"Are you sure you want to delete?");
    PressKey(VK_RETURN);  // "Yes" has the focus
    question.WaitUntilClosed();
    editor.ExpectProfiles({"Default"});
    // Enter is OK while no other button has the focus.
    MoveTo(editor, IDC_PROFILES_LIST);
    PressKey(VK_RETURN);
    editor.WaitUntilClosed();
    ExpectPage(sheet, {"Default"}, L"Default");
    ExpectStored({{}}, 0, {});
    Close(sheet, IDCANCEL);
}

}  // namespace
}  // namespace kvn::end_to_end
