// Renaming and copying profiles in the profile editor.
#include "tests/support/profile_editor_fixture.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

using Names = std::vector<std::wstring>;

class RenamingAProfileTest : public ProfileEditorTest {};

TEST_F(RenamingAProfileTest, StartsWithTheOldNameAndShowsTheNew) {
    OpenEditor({ProfileText("Default"), ProfileWithPrograms("a", {{"x", "C:\\x.exe"}}), ProfileText("b")});
    editor->SelectProfiles({1});
    Command(IDC_PROFILES_RENAME);
    const HWND dialog = AwaitNameDialog();
    sheet->Settle();
    EXPECT_EQ(L"Change profile name", TextOf(dialog));
    EXPECT_EQ(L"a", TextOf(GetDlgItem(dialog, IDC_PROFILE_NAME)));
    EnterName(dialog, L"renamed");
    CloseNameDialog(dialog, IDOK);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"Default", L"renamed", L"b"}), Profiles());
    EXPECT_EQ((std::vector<int>{1}), editor->SelectedRows(IDC_PROFILES_LIST));
    EXPECT_EQ((Names{L"C:\\x.exe"}), ProgramPaths());
    CloseEditor(IDOK);
    EXPECT_EQ((std::vector<std::string>{"Default", "renamed", "b"}), SavedNames());
    EXPECT_EQ((std::vector<std::string>{"C:\\x.exe"}), SavedPaths(1));
}

TEST_F(RenamingAProfileTest, DefaultProfileKeepsItsName) {
    OpenEditor({ProfileText("a"), ProfileText("Default")});
    editor->SelectProfiles({1});
    ExpectRefusal(IDC_PROFILES_RENAME, kRenameDefault);
    EXPECT_EQ((Names{L"a", L"Default"}), Profiles());
}

TEST_F(RenamingAProfileTest, TakenNamesAreRefusedItsOwnAmongThem) {
    OpenEditor({ProfileText("Default"), ProfileText("a"), ProfileText("b")});
    editor->SelectProfiles({1});
    for (const wchar_t* name : {L"a", L"b", L"Default"}) {
        Name(IDC_PROFILES_RENAME, name);
        ExpectWarning(AnswerMessageBox("about the name", IDOK), kNameUsed);
        EXPECT_TRUE(IsQuiet());
    }
    EXPECT_EQ((Names{L"Default", L"a", L"b"}), Profiles());
    const std::string before = Saved();
    CloseEditor(IDOK);
    EXPECT_EQ(before, Saved());
}

TEST_F(RenamingAProfileTest, AnotherCaseIsAnotherName) {
    OpenEditor({ProfileText("Default"), ProfileText("a"), ProfileText("b")});
    editor->SelectProfiles({1});
    Name(IDC_PROFILES_RENAME, L"A");
    Name(IDC_PROFILES_RENAME, L"B");
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"Default", L"B", L"b"}), Profiles());
}

TEST_F(RenamingAProfileTest, EmptyNameIsAcceptedOnce) {
    OpenEditor({ProfileText("Default"), ProfileText("a"), ProfileText("b")});
    editor->SelectProfiles({1});
    Name(IDC_PROFILES_RENAME, L"");
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"Default", L"", L"b"}), Profiles());
    editor->SelectProfiles({2});
    Name(IDC_PROFILES_RENAME, L"");
    ExpectWarning(AnswerMessageBox("about the name", IDOK), kNameUsed);
    CloseEditor(IDOK);
    EXPECT_EQ((std::vector<std::string>{"Default", "", "b"}), SavedNames());
    EXPECT_EQ((Names{L"Default", L"", L"b"}), ComboProfiles());
}

TEST_F(RenamingAProfileTest, CancelledNameDoesNothing) {
    OpenEditor({ProfileText("Default"), ProfileText("a")});
    editor->SelectProfiles({1});
    Command(IDC_PROFILES_RENAME);
    const HWND dialog = AwaitNameDialog();
    sheet->Settle();
    EnterName(dialog, L"other");
    CloseNameDialog(dialog, IDCANCEL);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"Default", L"a"}), Profiles());
}

TEST_F(RenamingAProfileTest, NamesAreComparedByTheirFirst255Characters) {
    const std::string longName(300, 'n');
    OpenEditor({ProfileText("Default"), ProfileText(longName), ProfileText("a")});
    editor->SelectProfiles({1});
    Command(IDC_PROFILES_RENAME);
    const HWND dialog = AwaitNameDialog();
    sheet->Settle();
    EXPECT_EQ(std::wstring(255, L'n'), TextOf(GetDlgItem(dialog, IDC_PROFILE_NAME)));
    CloseNameDialog(dialog, IDOK);
    EXPECT_TRUE(IsQuiet()) << "254 characters are another name than 255";
    EXPECT_EQ((Names{L"Default", std::wstring(254, L'n'), L"a"}), Profiles());
}

class CopyingAProfileTest : public ProfileEditorTest {};

TEST_F(CopyingAProfileTest, CopyHasTheSettingsAndNoPrograms) {
    const std::string gesture = "<Key>UD</Key><Function>7</Function><Memo>note</Memo><EtcKey></EtcKey>";
    OpenEditor({ProfileText("Default"),
                ProfileText("a", {{"tbutton", "6"},
                                  {"scrolls", "8"},
                                  {"Application", "<name>x</name><path>C:\\x.exe</path>"},
                                  {"Application", "<name>y</name><path>C:\\y.exe</path>"},
                                  {"Gesture", gesture}}),
                ProfileText("z")});
    editor->SelectProfiles({1});
    Command(IDC_PROFILES_COPY);
    const HWND dialog = AwaitNameDialog();
    sheet->Settle();
    EXPECT_EQ(L"Copy profile", TextOf(dialog));
    EXPECT_EQ(L"a", TextOf(GetDlgItem(dialog, IDC_PROFILE_NAME)));
    EnterName(dialog, L"copy");
    CloseNameDialog(dialog, IDOK);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"Default", L"a", L"z", L"copy"}), Profiles());
    EXPECT_EQ((std::vector<int>{1}), editor->SelectedRows(IDC_PROFILES_LIST));
    EXPECT_EQ((Names{L"C:\\x.exe", L"C:\\y.exe"}), ProgramPaths());
    editor->SelectProfiles({3});
    EXPECT_TRUE(editor->Programs().empty());
    CloseEditor(IDOK);
    EXPECT_EQ("6", SavedElement("tbutton", 3));
    EXPECT_EQ("8", SavedElement("scrolls", 3));
    EXPECT_EQ("UD", SavedElement("Key", 3));
    EXPECT_EQ("note", SavedElement("Memo", 3));
    EXPECT_EQ((std::vector<std::string>{"C:\\x.exe", "C:\\y.exe"}), SavedPaths(1));
    EXPECT_TRUE(SavedPaths(3).empty());
}

TEST_F(CopyingAProfileTest, DefaultProfileMayBeCopied) {
    OpenEditor({ProfileText("Default", {{"tbutton", "6"}})});
    editor->SelectProfiles({0});
    Name(IDC_PROFILES_COPY, L"copy");
    EXPECT_TRUE(IsQuiet());
    CloseEditor(IDOK);
    EXPECT_EQ((std::vector<std::string>{"Default", "copy"}), SavedNames());
    EXPECT_EQ("6", SavedElement("tbutton", 1));
}

TEST_F(CopyingAProfileTest, TakenNamesAreRefusedAndAnEmptyOneIsNot) {
    OpenEditor({ProfileText("Default"), ProfileText("a")});
    editor->SelectProfiles({1});
    for (const wchar_t* name : {L"a", L"Default"}) {
        Name(IDC_PROFILES_COPY, name);
        ExpectWarning(AnswerMessageBox("about the name", IDOK), kNameUsed);
    }
    Name(IDC_PROFILES_COPY, L"");
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"Default", L"a", L""}), Profiles());
}

TEST_F(CopyingAProfileTest, CancelledNameDoesNothing) {
    OpenEditor({ProfileText("Default"), ProfileText("a")});
    editor->SelectProfiles({1});
    Command(IDC_PROFILES_COPY);
    const HWND dialog = AwaitNameDialog();
    sheet->Settle();
    EnterName(dialog, L"other");
    CloseNameDialog(dialog, IDCANCEL);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"Default", L"a"}), Profiles());
}

TEST_F(CopyingAProfileTest, IsNotLimited) {
    OpenEditor(NumberedProfiles(100));
    ExpectRefusal(IDC_PROFILES_ADD, kLimitReached);
    editor->SelectProfiles({99});
    Name(IDC_PROFILES_COPY, L"p100");
    Name(IDC_PROFILES_COPY, L"p101");
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(102U, Profiles().size());
    EXPECT_EQ(L"p101", Profiles().back());
    CloseEditor(IDOK);
    EXPECT_EQ(102U, SavedNames().size());
}

class NewProfileTest : public ProfileEditorTest {};

TEST_F(NewProfileTest, IsScrolledIntoSight) {
    OpenEditor(NumberedProfiles(60));
    const HWND list = editor->Control(IDC_PROFILES_LIST);
    EXPECT_FALSE(SendMessageW(list, LVM_ISITEMVISIBLE, 59, 0));
    Name(IDC_PROFILES_ADD, L"new");
    EXPECT_TRUE(SendMessageW(list, LVM_ISITEMVISIBLE, 60, 0));
}

}  // namespace
}  // namespace kvn::test
