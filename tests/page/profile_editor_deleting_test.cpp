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
    EXPECT_EQ(ProgramPaths(), (Names{L"C:\\x.exe"}));
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default", L"b"}));
    EXPECT_TRUE(editor->Programs().empty());
    for (const int button : {IDC_PROFILES_DELETE, IDC_PROFILES_RENAME, IDC_PROFILES_COPY, IDC_PROFILES_ADD_PROGRAM,
                             IDC_PROFILES_DELETE_PROGRAM}) {
        EXPECT_FALSE(editor->IsEnabled(button)) << button;
    }
    CloseEditor(IDOK);
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default", "b"}));
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
    EXPECT_EQ(Profiles(), (Names{L"Default", L"p50"}));
    CloseEditor(IDOK);
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default", "p50"}));
}

TEST_F(DeletingProfilesTest, LooksUpNoProgramsOfProfilesBeingDeleted) {
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
    EXPECT_EQ(lookups, 0);
    EXPECT_EQ(Profiles(), (Names{L"Default"}));
}

TEST_F(DeletingProfilesTest, AnyAnswerButYesKeepsThem) {
    OpenEditor({ProfileText("Default"), ProfileText("a")}, 1);
    editor->SelectProfiles({1});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDNO);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default", L"a"}));
    EXPECT_EQ(editor->SelectedRows(IDC_PROFILES_LIST), (std::vector<int>{1}));
    EXPECT_EQ(ComboSelection(), 1);
}

TEST_F(DeletingProfilesTest, DefaultProfileAboveTheOthersEndsItBeforeAnyIsGone) {
    OpenEditor({ProfileText("Default"), ProfileText("a"), ProfileText("b")}, 2);
    editor->SelectProfiles({0, 1, 2});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    ExpectWarning(AnswerMessageBox("about the default profile", IDOK), kDeleteDefault);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default", L"a", L"b"}));
    EXPECT_EQ(editor->SelectedRows(IDC_PROFILES_LIST), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(ComboSelection(), 2);
    const std::string before = Saved();
    CloseEditor(IDOK);
    EXPECT_EQ(Saved(), before);
}

TEST_F(DeletingProfilesTest, RefusalAloneChangesNothing) {
    OpenEditor({ProfileWithPrograms("Default", {{"x", "C:\\x.exe"}, {"y", "C:\\y.exe"}})});
    editor->SelectProfiles({0});
    editor->SelectPrograms({1});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    ExpectWarning(AnswerMessageBox("about the default profile", IDOK), kDeleteDefault);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(editor->SelectedRows(IDC_PROFILES_PROGRAMS), (std::vector<int>{1}));
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
    EXPECT_EQ(Profiles(), (Names{L"b", L"Default", L"c"}));
    EXPECT_EQ(editor->SelectedRows(IDC_PROFILES_LIST), (std::vector<int>{1}));
    EXPECT_EQ(ProgramPaths(), (Names{L"C:\\x.exe"}));
    EXPECT_TRUE(editor->IsEnabled(IDC_PROFILES_RENAME));
    EXPECT_EQ(ComboSelection(), 1) << "only a complete deletion moves the page's selection";
    CloseEditor(IDOK);
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"b", "Default", "c"}));
    EXPECT_EQ(ElementIn(Saved(), -1, "select_profile"), "1");
}

TEST_F(DeletingProfilesTest, SelectionBeyondTheShorterListBecomesTheFirst) {
    OpenEditor({ProfileText("a"), ProfileText("Default")}, 1);
    editor->SelectProfiles({0, 1});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    AnswerMessageBox("about the default profile", IDOK);
    CloseEditor(IDOK);
    EXPECT_EQ(ComboProfiles(), (Names{L"Default"}));
    EXPECT_EQ(ComboSelection(), 0);
    EXPECT_EQ(ElementIn(Saved(), -1, "select_profile"), "0");
    ApplySuccessfully();
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default"}));
}

TEST_F(DeletingProfilesTest, DefaultProfileIsRecognisedByItsExactName) {
    OpenEditor({ProfileText("Default"), ProfileText("default"), ProfileText("Default2")});
    editor->SelectProfiles({1, 2});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default"}));
}

TEST_F(DeletingProfilesTest, LastProfileOfAListWithoutADefaultStays) {
    OpenEditor({ProfileText("a"), ProfileText("b")});
    editor->SelectProfiles({0, 1});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    ExpectWarning(AnswerMessageBox("about the default profile", IDOK), kDeleteDefault);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"b"}));
    CloseEditor(IDOK);
    EXPECT_EQ(ComboProfiles(), (Names{L"b"}));
    EXPECT_EQ(ComboSelection(), 0);
}

TEST_F(DeletingProfilesTest, OfTwoWithOneNameTheFirstGoes) {
    OpenEditor({ProfileText("Default"), ProfileText("twice", {{"tbutton", "6"}}), ProfileText("between"),
                ProfileText("twice", {{"tbutton", "7"}})});
    editor->SelectProfiles({3});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default", L"between", L"twice"}));
    CloseEditor(IDOK);
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default", "between", "twice"}));
    EXPECT_EQ(SavedElement("tbutton", 2), "7");
}

TEST_F(DeletingProfilesTest, NameTooLongToCompareIsDeletedAllTheSame) {
    OpenEditor({ProfileText("Default"), ProfileText(std::string(300, 'n')), ProfileText(std::string(300, 'n') + "2")});
    editor->SelectProfiles({2});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    EXPECT_TRUE(IsQuiet());
    CloseEditor(IDOK);
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default", std::string(300, 'n')}));
}

TEST_F(DeletingProfilesTest, MovesThePagesSelectionAtOnceAndCancelDoesNotUndoThat) {
    const std::vector<std::string> profiles{ProfileText("Default"), ProfileText("a"),
                                            ProfileText("b", {{"tbutton", "6"}})};
    OpenEditor(profiles, 2);
    const std::string before = Saved();
    EXPECT_EQ(ComboSelection(), 2);
    editor->SelectProfiles({1});
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    EXPECT_EQ(ComboSelection(), 0);
    EXPECT_EQ(ComboProfiles(), (Names{L"Default", L"a", L"b"}));
    CloseEditor(IDCANCEL);
    EXPECT_EQ(ComboSelection(), 0);
    EXPECT_EQ(ComboProfiles(), (Names{L"Default", L"a", L"b"}));
    EXPECT_EQ(Saved(), before);
    EXPECT_EQ(Chosen(IDC_PANE_CENTER), 6) << "the pane has not changed";
    ApplySuccessfully();
    EXPECT_EQ(ElementIn(Saved(), -1, "select_profile"), "0");
    EXPECT_EQ(SavedNames(), (std::vector<std::string>{"Default", "a", "b"}));
}

TEST_F(DeletingProfilesTest, FocusGoesFromTheDisabledButtonToTheList) {
    OpenEditor({ProfileText("Default"), ProfileText("a")});
    editor->SelectProfiles({1});
    sheet->Run([&] { SetFocus(editor->Control(IDC_PROFILES_DELETE)); });
    CommandAndAnswer(IDC_PROFILES_DELETE, IDYES);
    EXPECT_TRUE(IsQuiet());
    EXPECT_FALSE(editor->IsEnabled(IDC_PROFILES_DELETE));
    EXPECT_EQ(sheet->Focus(), editor->Control(IDC_PROFILES_LIST));
}

}  // namespace
}  // namespace kvn::test
