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
    EXPECT_EQ(TextOf(dialog), L"Change profile name");
    EXPECT_EQ(TextOf(GetDlgItem(dialog, IDC_PROFILE_NAME)), L"a");
    EnterName(dialog, L"renamed");
    CloseNameDialog(dialog, IDOK);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default", L"renamed", L"b"}));
    EXPECT_EQ(editor->SelectedRows(IDC_PROFILES_LIST), (std::vector<int>{1}));
    EXPECT_EQ(ProgramPaths(), (Names{L"C:\\x.exe"}));
    CloseEditor(IDOK);
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default", "renamed", "b"}));
    EXPECT_EQ(SavedPaths(1), (std::vector<std::string>{"C:\\x.exe"}));
}

TEST_F(RenamingAProfileTest, DefaultProfileKeepsItsName) {
    OpenEditor({ProfileText("a"), ProfileText("Default")});
    editor->SelectProfiles({1});
    ExpectRefusal(IDC_PROFILES_RENAME, kRenameDefault);
    EXPECT_EQ(Profiles(), (Names{L"a", L"Default"}));
}

TEST_F(RenamingAProfileTest, TakenNamesAreRefusedItsOwnAmongThem) {
    OpenEditor({ProfileText("Default"), ProfileText("a"), ProfileText("b")});
    editor->SelectProfiles({1});
    for (const wchar_t* name : {L"a", L"b", L"Default"}) {
        Name(IDC_PROFILES_RENAME, name);
        ExpectWarning(AnswerMessageBox("about the name", IDOK), kNameUsed);
        EXPECT_TRUE(IsQuiet());
    }
    EXPECT_EQ(Profiles(), (Names{L"Default", L"a", L"b"}));
    const std::string before = Saved();
    CloseEditor(IDOK);
    EXPECT_EQ(Saved(), before);
}

TEST_F(RenamingAProfileTest, AnotherCaseIsAnotherName) {
    OpenEditor({ProfileText("Default"), ProfileText("a"), ProfileText("b")});
    editor->SelectProfiles({1});
    Name(IDC_PROFILES_RENAME, L"A");
    Name(IDC_PROFILES_RENAME, L"B");
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default", L"B", L"b"}));
}

TEST_F(RenamingAProfileTest, EmptyNameIsAcceptedOnce) {
    OpenEditor({ProfileText("Default"), ProfileText("a"), ProfileText("b")});
    editor->SelectProfiles({1});
    Name(IDC_PROFILES_RENAME, L"");
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default", L"", L"b"}));
    editor->SelectProfiles({2});
    Name(IDC_PROFILES_RENAME, L"");
    ExpectWarning(AnswerMessageBox("about the name", IDOK), kNameUsed);
    CloseEditor(IDOK);
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default", "", "b"}));
    EXPECT_EQ(ComboProfiles(), (Names{L"Default", L"", L"b"}));
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
    EXPECT_EQ(Profiles(), (Names{L"Default", L"a"}));
}

TEST_F(RenamingAProfileTest, NamesAreComparedByTheirFirst255Characters) {
    const std::string longName(300, 'n');
    OpenEditor({ProfileText("Default"), ProfileText(longName), ProfileText("a")});
    editor->SelectProfiles({1});
    Command(IDC_PROFILES_RENAME);
    const HWND dialog = AwaitNameDialog();
    sheet->Settle();
    EXPECT_EQ(TextOf(GetDlgItem(dialog, IDC_PROFILE_NAME)), std::wstring(255, L'n'));
    CloseNameDialog(dialog, IDOK);
    EXPECT_TRUE(IsQuiet()) << "254 characters are another name than 255";
    EXPECT_EQ(Profiles(), (Names{L"Default", std::wstring(254, L'n'), L"a"}));
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
    EXPECT_EQ(TextOf(dialog), L"Copy profile");
    EXPECT_EQ(TextOf(GetDlgItem(dialog, IDC_PROFILE_NAME)), L"a");
    EnterName(dialog, L"copy");
    CloseNameDialog(dialog, IDOK);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default", L"a", L"z", L"copy"}));
    EXPECT_EQ(editor->SelectedRows(IDC_PROFILES_LIST), (std::vector<int>{1}));
    EXPECT_EQ(ProgramPaths(), (Names{L"C:\\x.exe", L"C:\\y.exe"}));
    editor->SelectProfiles({3});
    EXPECT_TRUE(editor->Programs().empty());
    CloseEditor(IDOK);
    EXPECT_EQ(SavedElement("tbutton", 3), "6");
    EXPECT_EQ(SavedElement("scrolls", 3), "8");
    EXPECT_EQ(SavedElement("Key", 3), "UD");
    EXPECT_EQ(SavedElement("Memo", 3), "note");
    EXPECT_EQ(SavedPaths(1), (std::vector<std::string>{"C:\\x.exe", "C:\\y.exe"}));
    EXPECT_TRUE(SavedPaths(3).empty());
}

TEST_F(CopyingAProfileTest, DefaultProfileMayBeCopied) {
    OpenEditor({ProfileText("Default", {{"tbutton", "6"}})});
    editor->SelectProfiles({0});
    Name(IDC_PROFILES_COPY, L"copy");
    EXPECT_TRUE(IsQuiet());
    CloseEditor(IDOK);
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default", "copy"}));
    EXPECT_EQ(SavedElement("tbutton", 1), "6");
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
    EXPECT_EQ(Profiles(), (Names{L"Default", L"a", L""}));
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
    EXPECT_EQ(Profiles(), (Names{L"Default", L"a"}));
}

TEST_F(CopyingAProfileTest, IsNotLimited) {
    OpenEditor(NumberedProfiles(100));
    ExpectRefusal(IDC_PROFILES_ADD, kLimitReached);
    editor->SelectProfiles({99});
    Name(IDC_PROFILES_COPY, L"p100");
    Name(IDC_PROFILES_COPY, L"p101");
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles().size(), 102U);
    EXPECT_EQ(Profiles().back(), L"p101");
    CloseEditor(IDOK);
    EXPECT_EQ(SavedNames().size(), 102U);
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
