// Deleting profiles in the profile editor.
#include <windows.h>

#include <shellapi.h>

#include "tests/support/profile_editor_fixture.h"

namespace kvn::test {
namespace {

using Names = std::vector<std::wstring>;

class DeletingProfilesTest : public ProfileEditorTest {};

TEST_F(DeletingProfilesTest, RemovesTheSelectedOneAndItsPrograms) {
    OpenEditor({ProfileText("Default"), ProfileWithPrograms("a", {{"x", "C:\\x.exe"}}), ProfileText("b")});
    editor->SelectProfiles({1});
    EXPECT_EQ((Names{L"C:\\x.exe"}), ProgramPaths());
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"Default", L"b"}), Profiles());
    EXPECT_TRUE(editor->Programs().empty());
    for (const int button : {IDC_PROFILES_DELETE, IDC_PROFILES_RENAME, IDC_PROFILES_COPY, IDC_PROFILES_ADD_PROGRAM,
                             IDC_PROFILES_DELETE_PROGRAM}) {
        EXPECT_FALSE(editor->IsEnabled(button)) << button;
    }
    CloseEditor(IDOK);
    EXPECT_EQ((std::vector<std::string>{"Default", "b"}), SavedNames());
}

TEST_F(DeletingProfilesTest, RemovesSeveralAtOnce) {
    OpenEditor(NumberedProfiles(100));
    std::vector<int> rows;
    for (int row = 1; row < 100; ++row) {
        if (row != 50) rows.push_back(row);
    }
    editor->SelectProfiles(rows);
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"Default", L"p50"}), Profiles());
    CloseEditor(IDOK);
    EXPECT_EQ((std::vector<std::string>{"Default", "p50"}), SavedNames());
}

TEST_F(DeletingProfilesTest, LooksForNoProgramOfWhatIsGoing) {
    std::vector<std::string> profiles = NumberedProfiles(20);
    for (std::size_t i = 1; i < profiles.size(); ++i) {
        profiles[i] = ProfileWithPrograms("p" + std::to_string(i), {{"x", "C:\\x" + std::to_string(i) + ".exe"}});
    }
    OpenEditor(profiles);
    std::vector<int> rows;
    for (int row = 1; row < 20; ++row) rows.push_back(row);
    editor->SelectProfiles(rows);
    int lookups = 0;
    {
        const ReplacedImport<"SHGetFileInfoW", decltype(SHGetFileInfoW)> lookup(
            module.Handle(), [&](const wchar_t*, DWORD, SHFILEINFOW*, UINT, UINT) -> DWORD_PTR {
                ++lookups;
                return 0;
            });
        ASSERT_TRUE(lookup.IsInPlace());
        CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
        EXPECT_TRUE(IsQuiet());
    }
    EXPECT_EQ(0, lookups);
    EXPECT_EQ((Names{L"Default"}), Profiles());
}

TEST_F(DeletingProfilesTest, AnyAnswerButYesKeepsThem) {
    OpenEditor({ProfileText("Default"), ProfileText("a")}, 1);
    editor->SelectProfiles({1});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDNO);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"Default", L"a"}), Profiles());
    EXPECT_EQ((std::vector<int>{1}), editor->SelectedRows(IDC_PROFILES_LIST));
    EXPECT_EQ(1, ComboSelection());
}

TEST_F(DeletingProfilesTest, DefaultProfileAboveTheOthersEndsItBeforeAnyIsGone) {
    OpenEditor({ProfileText("Default"), ProfileText("a"), ProfileText("b")}, 2);
    editor->SelectProfiles({0, 1, 2});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    ExpectWarning(AnswerMessageBox("about the default profile", IDOK), kDeleteDefault);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"Default", L"a", L"b"}), Profiles());
    EXPECT_EQ((std::vector<int>{0, 1, 2}), editor->SelectedRows(IDC_PROFILES_LIST));
    EXPECT_EQ(2, ComboSelection());
    const std::string before = Saved();
    CloseEditor(IDOK);
    EXPECT_EQ(before, Saved());
}

TEST_F(DeletingProfilesTest, RefusalAloneChangesNothing) {
    OpenEditor({ProfileWithPrograms("Default", {{"x", "C:\\x.exe"}, {"y", "C:\\y.exe"}})});
    editor->SelectProfiles({0});
    editor->SelectPrograms({1});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    ExpectWarning(AnswerMessageBox("about the default profile", IDOK), kDeleteDefault);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((std::vector<int>{1}), editor->SelectedRows(IDC_PROFILES_PROGRAMS));
    EXPECT_TRUE(editor->IsEnabled(IDC_PROFILES_DELETE_PROGRAM));
}

TEST_F(DeletingProfilesTest, DefaultProfileBelowOthersLeavesTheirDeletion) {
    OpenEditor(
        {ProfileText("a"), ProfileText("b"), ProfileWithPrograms("Default", {{"x", "C:\\x.exe"}}), ProfileText("c")},
        1);
    editor->SelectProfiles({0, 2});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    ExpectWarning(AnswerMessageBox("about the default profile", IDOK), kDeleteDefault);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"b", L"Default", L"c"}), Profiles());
    EXPECT_EQ((std::vector<int>{1}), editor->SelectedRows(IDC_PROFILES_LIST));
    EXPECT_EQ((Names{L"C:\\x.exe"}), ProgramPaths());
    EXPECT_TRUE(editor->IsEnabled(IDC_PROFILES_RENAME));
    EXPECT_EQ(1, ComboSelection()) << "the page's selection is moved by a whole deletion only";
    CloseEditor(IDOK);
    EXPECT_EQ((std::vector<std::string>{"b", "Default", "c"}), SavedNames());
    EXPECT_EQ("1", ElementIn(Saved(), -1, "select_profile"));
}

TEST_F(DeletingProfilesTest, SelectionBeyondTheShorterListBecomesTheFirst) {
    OpenEditor({ProfileText("a"), ProfileText("Default")}, 1);
    editor->SelectProfiles({0, 1});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    AnswerMessageBox("about the default profile", IDOK);
    CloseEditor(IDOK);
    EXPECT_EQ((Names{L"Default"}), ComboProfiles());
    EXPECT_EQ(0, ComboSelection());
    EXPECT_EQ("0", ElementIn(Saved(), -1, "select_profile"));
    ApplySuccessfully();
    EXPECT_EQ((std::vector<std::string>{"Default"}), SavedNames());
}

TEST_F(DeletingProfilesTest, DefaultProfileIsKnownByItsExactName) {
    OpenEditor({ProfileText("Default"), ProfileText("default"), ProfileText("Default2")});
    editor->SelectProfiles({1, 2});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"Default"}), Profiles());
}

TEST_F(DeletingProfilesTest, LastProfileOfAListWithoutADefaultStays) {
    OpenEditor({ProfileText("a"), ProfileText("b")});
    editor->SelectProfiles({0, 1});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    ExpectWarning(AnswerMessageBox("about the default profile", IDOK), kDeleteDefault);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"b"}), Profiles());
    CloseEditor(IDOK);
    EXPECT_EQ((Names{L"b"}), ComboProfiles());
    EXPECT_EQ(0, ComboSelection());
}

TEST_F(DeletingProfilesTest, OfTwoWithOneNameTheFirstGoes) {
    OpenEditor({ProfileText("Default"), ProfileText("twice", {{"tbutton", "6"}}), ProfileText("between"),
                ProfileText("twice", {{"tbutton", "7"}})});
    editor->SelectProfiles({3});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ((Names{L"Default", L"between", L"twice"}), Profiles());
    CloseEditor(IDOK);
    EXPECT_EQ((std::vector<std::string>{"Default", "between", "twice"}), SavedNames());
    EXPECT_EQ("7", SavedElement("tbutton", 2));
}

TEST_F(DeletingProfilesTest, NameTooLongToCompareIsDeletedAllTheSame) {
    OpenEditor({ProfileText("Default"), ProfileText(std::string(300, 'n')), ProfileText(std::string(300, 'n') + "2")});
    editor->SelectProfiles({2});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    EXPECT_TRUE(IsQuiet());
    CloseEditor(IDOK);
    EXPECT_EQ((std::vector<std::string>{"Default", std::string(300, 'n')}), SavedNames());
}

TEST_F(DeletingProfilesTest, MovesThePagesSelectionAtOnceAndCancelLeavesItSo) {
    const std::vector<std::string> profiles{ProfileText("Default"), ProfileText("a"),
                                            ProfileText("b", {{"tbutton", "6"}})};
    OpenEditor(profiles, 2);
    const std::string before = Saved();
    EXPECT_EQ(2, ComboSelection());
    editor->SelectProfiles({1});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    EXPECT_EQ(0, ComboSelection());
    EXPECT_EQ((Names{L"Default", L"a", L"b"}), ComboProfiles());
    CloseEditor(IDCANCEL);
    EXPECT_EQ(0, ComboSelection());
    EXPECT_EQ((Names{L"Default", L"a", L"b"}), ComboProfiles());
    EXPECT_EQ(before, Saved());
    EXPECT_EQ(6, Chosen(IDC_PANE_CENTER)) << "the pane shows what it showed";
    ApplySuccessfully();
    EXPECT_EQ("0", ElementIn(Saved(), -1, "select_profile"));
    EXPECT_EQ((std::vector<std::string>{"Default", "a", "b"}), SavedNames());
}

TEST_F(DeletingProfilesTest, FocusGoesFromTheDisabledButtonToTheList) {
    OpenEditor({ProfileText("Default"), ProfileText("a")});
    editor->SelectProfiles({1});
    sheet->Run([&] { SetFocus(editor->Control(IDC_PROFILES_DELETE)); });
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    EXPECT_TRUE(IsQuiet());
    EXPECT_FALSE(editor->IsEnabled(IDC_PROFILES_DELETE));
    EXPECT_EQ(editor->Control(IDC_PROFILES_LIST), sheet->Focus());
}

}  // namespace
}  // namespace kvn::test
