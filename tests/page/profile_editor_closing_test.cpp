// OK and Cancel of the profile editor, and their effect on the page's profiles, its combo box and the file.
#include <windows.h>

#include "platform/unique_resource.h"
#include "tests/support/profile_editor_fixture.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

using Names = std::vector<std::wstring>;

class ClosingTheProfileEditorTest : public ProfileEditorTest {};

TEST_F(ClosingTheProfileEditorTest, OkWithoutAChangeWritesNothing) {
    OpenEditor({ProfileText("Default"), ProfileText("a")}, 1);
    const std::string before = Saved();
    CloseEditor(IDOK);
    EXPECT_EQ(Saved(), before);
    EXPECT_EQ(ComboProfiles(), (Names{L"Default", L"a"}));
    EXPECT_EQ(ComboSelection(), 1);
}

TEST_F(ClosingTheProfileEditorTest, OkWritesEveryKindOfChange) {
    OpenEditor({ProfileText("Default"), ProfileText("a")});
    Name(IDC_PROFILES_ADD, L"added");
    CloseEditor(IDOK);
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default", "a", "added"}));

    ReopenEditor();
    editor->SelectProfiles({1});
    Name(IDC_PROFILES_RENAME, L"renamed");
    CloseEditor(IDOK);
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default", "renamed", "added"}));

    ReopenEditor();
    editor->SelectProfiles({2});
    Name(IDC_PROFILES_COPY, L"copied");
    CloseEditor(IDOK);
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default", "renamed", "added", "copied"}));

    ReopenEditor();
    editor->SelectProfiles({1});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    CloseEditor(IDOK);
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default", "added", "copied"}));
}

TEST_F(ClosingTheProfileEditorTest, OkWritesTheModelAndTheSelectionIntoTheFile) {
    OpenEditor({ProfileText("Default"), ProfileText("a")}, 1);
    Name(IDC_PROFILES_ADD, L"added");
    CloseEditor(IDOK);
    EXPECT_EQ(ElementIn(Saved(), -1, "vid"), "2748");
    EXPECT_EQ(ElementIn(Saved(), -1, "pid"), "161");
    EXPECT_EQ(ElementIn(Saved(), -1, "select_profile"), "1");
}

TEST_F(ClosingTheProfileEditorTest, ChangeThatIsUndoneByHandIsStillWritten) {
    OpenEditor({ProfileText("Default"), ProfileText("a")});
    const std::string before = Saved();
    editor->SelectProfiles({1});
    Name(IDC_PROFILES_RENAME, L"other");
    Name(IDC_PROFILES_RENAME, L"a");
    CloseEditor(IDOK);
    EXPECT_NE(Saved(), before);
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default", "a"}));
}

TEST_F(ClosingTheProfileEditorTest, ChangeOfAnEarlierOpeningIsForgotten) {
    OpenEditor({ProfileText("Default"), ProfileText("a")});
    Name(IDC_PROFILES_ADD, L"added");
    CloseEditor(IDCANCEL);
    const std::string before = Saved();
    ReopenEditor();
    CloseEditor(IDOK);
    EXPECT_EQ(Saved(), before);
}

TEST_F(ClosingTheProfileEditorTest, OkFillsThePagesListAgain) {
    OpenEditor({ProfileText("Default"), ProfileText("a"), ProfileText("b")}, 2);
    Name(IDC_PROFILES_ADD, L"added");
    editor->SelectProfiles({1});
    Name(IDC_PROFILES_RENAME, L"A");
    EXPECT_EQ(ComboProfiles(), (Names{L"Default", L"a", L"b"}));
    CloseEditor(IDOK);
    EXPECT_EQ(ComboProfiles(), (Names{L"Default", L"A", L"b", L"added"}));
    EXPECT_EQ(ComboSelection(), 2);
    EXPECT_EQ(SelectedText(sheet->PageControl(IDC_PAGE_PROFILE)), L"b");
}

TEST_F(ClosingTheProfileEditorTest, NewProfileCanBeChosenAndAppliedAtOnce) {
    OpenEditor({ProfileText("Default", {{"tbutton", "6"}})});
    Name(IDC_PROFILES_ADD, L"added");
    CloseEditor(IDOK);
    ChooseProfile(1);
    EXPECT_EQ(Chosen(IDC_PANE_CENTER), 9);
    Choose(IDC_PANE_CENTER, 7);
    ApplySuccessfully();
    EXPECT_EQ(ElementIn(Saved(), -1, "select_profile"), "1");
    EXPECT_EQ(SavedElement("tbutton", 0), "6");
    EXPECT_EQ(SavedElement("tbutton", 1), "7");
}

TEST_F(ClosingTheProfileEditorTest, PanesKeepTheirContents) {
    OpenEditor({ProfileText("Default"), ProfileText("a", {{"tbutton", "6"}})}, 1);
    editor->SelectProfiles({1});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    CloseEditor(IDOK);
    EXPECT_EQ(ComboSelection(), 0);
    EXPECT_EQ(Chosen(IDC_PANE_CENTER), 6);
}

TEST_F(ClosingTheProfileEditorTest, CancelDropsEverything) {
    OpenEditor({ProfileText("Default"), ProfileWithPrograms("a", {{"x", "C:\\x.exe"}}), ProfileText("b")}, 1);
    const std::string before = Saved();
    editor->SelectProfiles({1});
    editor->SelectPrograms({0});
    CommandAndAnswer(IDC_PROFILES_DELETE_PROGRAM, IDYES);
    Name(IDC_PROFILES_RENAME, L"renamed");
    Name(IDC_PROFILES_COPY, L"copied");
    Name(IDC_PROFILES_ADD, L"added");
    EXPECT_EQ(Profiles(), (Names{L"Default", L"renamed", L"b", L"copied", L"added"}));
    CloseEditor(IDCANCEL);
    EXPECT_EQ(Saved(), before);
    EXPECT_EQ(ComboProfiles(), (Names{L"Default", L"a", L"b"}));
    EXPECT_EQ(ComboSelection(), 1);
    ReopenEditor();
    EXPECT_EQ(Profiles(), (Names{L"Default", L"a", L"b"}));
    editor->SelectProfiles({1});
    EXPECT_EQ(ProgramPaths(), (Names{L"C:\\x.exe"}));
}

TEST_F(ClosingTheProfileEditorTest, EscapeAndTheCloseButtonCancel) {
    OpenEditor({ProfileText("Default")});
    Name(IDC_PROFILES_ADD, L"added");
    BringToFront(editor->Window());
    PressKey(VK_ESCAPE);
    Await("the end of the editor", [&] { return !editor->IsOpen(); });
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(ComboProfiles(), (Names{L"Default"}));
    ReopenEditor();
    Name(IDC_PROFILES_ADD, L"added");
    PostMessageW(editor->Window(), WM_SYSCOMMAND, SC_CLOSE, 0);
    Await("the end of the editor", [&] { return !editor->IsOpen(); });
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(ComboProfiles(), (Names{L"Default"}));
}

TEST_F(ClosingTheProfileEditorTest, FileThatCannotBeWrittenIsReportedAndTheEditorCloses) {
    OpenEditor({ProfileText("Default"), ProfileText("a")});
    const std::string before = Saved();
    Name(IDC_PROFILES_ADD, L"added");
    {
        // No other program may write or replace the file while this is open.
        const platform::UniqueFile held(
            CreateFileW(ProfilePath().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
        ASSERT_TRUE(held);
        editor->Press(IDOK);
        const MessageBoxSeen seen = AnswerMessageBox("about the file", IDOK);
        ExpectWarning(seen, L"Settings failed.");
        EXPECT_EQ(seen.owner, editor->Window());
        Await("the end of the editor", [&] { return !editor->IsOpen(); });
    }
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(Saved(), before);
    EXPECT_EQ(ComboProfiles(), (Names{L"Default", L"a", L"added"})) << "the profiles in memory stay";
    ApplySuccessfully();
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default", "a", "added"}));
}

TEST_F(ClosingTheProfileEditorTest, SheetCanBeAppliedAfterwardsWhateverTheAnswer) {
    OpenEditor({ProfileText("Default")});
    EXPECT_FALSE(IsWindowEnabled(sheet->Sheet()));
    CloseEditor(IDCANCEL);
    EXPECT_TRUE(sheet->IsApplyEnabled());
    Close();
    Open();
    EXPECT_FALSE(sheet->IsApplyEnabled());
    ReopenEditor();
    CloseEditor(IDOK);
    EXPECT_TRUE(sheet->IsApplyEnabled());
}

TEST_F(ClosingTheProfileEditorTest, ASecondEditorDoesNotOpen) {
    OpenEditor({ProfileText("Default")});
    PostMessageW(sheet->PageControl(IDC_PAGE_EDIT_PROFILE), BM_CLICK, 0, 0);
    sheet->Settle();
    CloseEditor(IDOK);
    EXPECT_TRUE(sheet->IsQuiet());
}

TEST_F(ClosingTheProfileEditorTest, OnlyAClickOnTheButtonOpensIt) {
    WriteProfiles({ProfileText("Default")});
    Open();
    const HWND button = sheet->PageControl(IDC_PAGE_EDIT_PROFILE);
    for (const WORD notification : {WORD{BN_SETFOCUS}, WORD{BN_KILLFOCUS}, WORD{BN_DOUBLECLICKED}}) {
        sheet->Start([=] {
            SendMessageW(GetParent(button), WM_COMMAND, MAKEWPARAM(IDC_PAGE_EDIT_PROFILE, notification),
                         reinterpret_cast<LPARAM>(button));
        });
        EXPECT_TRUE(sheet->IsQuiet());
    }
}

TEST_F(ClosingTheProfileEditorTest, OpeningAndClosingManyTimesLeavesNothingBehind) {
    OpenEditor({ProfileWithPrograms("Default", {{"x", kRealProgram}}), ProfileText("a")});
    CloseEditor(IDOK);
    const auto windows = [&] {
        int count = 0;
        FindTopLevelWindow([&](HWND) {
            ++count;
            return false;
        });
        return count;
    };
    const int before = windows();
    for (int i = 0; i < 10; ++i) {
        ReopenEditor();
        editor->SelectProfiles({0});
        CloseEditor(i % 2 == 0 ? IDOK : IDCANCEL);
    }
    EXPECT_EQ(windows(), before);
}

}  // namespace
}  // namespace kvn::test
