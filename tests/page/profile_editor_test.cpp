// The profile editor as it opens, what its buttons allow, and adding profiles.
#include <windows.h>

#include <commctrl.h>

#include "tests/support/list_contents.h"
#include "tests/support/profile_editor_fixture.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

using Names = std::vector<std::wstring>;

// Which of the six buttons that depend on the selection are enabled, in this order.
constexpr int kSwitchedButtons[] = {IDC_PROFILES_ADD,  IDC_PROFILES_DELETE,      IDC_PROFILES_RENAME,
                                    IDC_PROFILES_COPY, IDC_PROFILES_ADD_PROGRAM, IDC_PROFILES_DELETE_PROGRAM};
using States = std::vector<bool>;

class ProfileEditorOpeningTest : public ProfileEditorTest {
protected:
    States ButtonStates() const {
        States states;
        for (const int button : kSwitchedButtons) states.push_back(editor->IsEnabled(button));
        return states;
    }
};

TEST_F(ProfileEditorOpeningTest, ShowsTheProfilesInTheirOrderAndNoProgram) {
    OpenEditor({ProfileWithPrograms("Default", {{"Editor", kRealProgram}}), ProfileText("b"), ProfileText("a")}, 1);
    EXPECT_EQ(TextOf(editor->Window()), L"Edit Profile");
    EXPECT_EQ(Profiles(), (Names{L"Default", L"b", L"a"}));
    EXPECT_TRUE(editor->Programs().empty());
    EXPECT_TRUE(editor->SelectedRows(IDC_PROFILES_LIST).empty());
    EXPECT_EQ(GetWindow(editor->Window(), GW_OWNER), sheet->Sheet());
}

TEST_F(ProfileEditorOpeningTest, FocusIsOnTheProfiles) {
    OpenEditor({ProfileText("Default")});
    EXPECT_TRUE(ComesTrue([&] { return sheet->Focus() == editor->Control(IDC_PROFILES_LIST); }));
}

TEST_F(ProfileEditorOpeningTest, ListsHaveTheirColumnsAndSelectFullRows) {
    OpenEditor({ProfileText("Default")});
    EXPECT_EQ(ColumnsOf(editor->Control(IDC_PROFILES_LIST)), (std::vector<ListColumn>{{L"Profile", 380, LVCFMT_LEFT}}));
    EXPECT_EQ(ColumnsOf(editor->Control(IDC_PROFILES_PROGRAMS)),
              (std::vector<ListColumn>{{L"File name", 150, LVCFMT_LEFT}, {L"Location", 230, LVCFMT_LEFT}}));
    for (const int list : {IDC_PROFILES_LIST, IDC_PROFILES_PROGRAMS}) {
        EXPECT_EQ(SendMessageW(editor->Control(list), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_FULLROWSELECT,
                  LVS_EX_FULLROWSELECT);
    }
}

TEST_F(ProfileEditorOpeningTest, OnlyTheAddButtonsAreEnabledAtFirst) {
    OpenEditor({ProfileText("Default"), ProfileText("a")});
    EXPECT_EQ(ButtonStates(), (States{true, false, false, false, true, false}));
}

TEST_F(ProfileEditorOpeningTest, ButtonsFollowTheNumberOfSelectedProfiles) {
    OpenEditor({ProfileText("Default"), ProfileText("a"), ProfileText("b")});
    const States withNone{true, false, false, false, false, false};
    const States withOne{true, true, true, true, true, false};
    const States withMany{true, true, false, false, false, false};
    editor->SelectProfiles({1});
    EXPECT_EQ(ButtonStates(), withOne);
    editor->SelectProfiles({1, 2});
    EXPECT_EQ(ButtonStates(), withMany);
    editor->SelectProfiles({0, 1, 2});
    EXPECT_EQ(ButtonStates(), withMany);
    editor->SelectProfiles({0});
    EXPECT_EQ(ButtonStates(), withOne);
    editor->SelectProfiles({});
    EXPECT_EQ(ButtonStates(), withNone);
}

TEST_F(ProfileEditorOpeningTest, DeletingAProgramNeedsASelectedOne) {
    OpenEditor({ProfileWithPrograms("Default", {{"a", "C:\\a.exe"}, {"b", "C:\\b.exe"}}), ProfileText("other")});
    editor->SelectProfiles({0});
    EXPECT_FALSE(editor->IsEnabled(IDC_PROFILES_DELETE_PROGRAM));
    editor->SelectPrograms({1});
    EXPECT_TRUE(editor->IsEnabled(IDC_PROFILES_DELETE_PROGRAM));
    editor->SelectPrograms({0, 1});
    EXPECT_TRUE(editor->IsEnabled(IDC_PROFILES_DELETE_PROGRAM));
    editor->SelectPrograms({});
    EXPECT_FALSE(editor->IsEnabled(IDC_PROFILES_DELETE_PROGRAM));
    editor->SelectPrograms({0});
    editor->SelectProfiles({1});
    EXPECT_FALSE(editor->IsEnabled(IDC_PROFILES_DELETE_PROGRAM));
}

TEST_F(ProfileEditorOpeningTest, FocusThatMovesOverTheProfilesChangesNothing) {
    OpenEditor({ProfileWithPrograms("Default", {{"a", "C:\\a.exe"}}), ProfileText("other")});
    const auto moveFocus = [&](int row) {
        LVITEMW item{};
        item.state = LVIS_FOCUSED;
        item.stateMask = LVIS_FOCUSED;
        SendMessageW(editor->Control(IDC_PROFILES_LIST), LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
    };
    moveFocus(1);
    EXPECT_EQ(ButtonStates(), (States{true, false, false, false, true, false}));
    editor->SelectProfiles({0});
    editor->SelectPrograms({0});
    moveFocus(0);
    EXPECT_EQ(ButtonStates(), (States{true, true, true, true, true, true}));
    EXPECT_EQ(editor->SelectedRows(IDC_PROFILES_PROGRAMS), (std::vector<int>{0}));
}

TEST_F(ProfileEditorOpeningTest, CommandsThatNeedAProfileSayThatNoneIsSelected) {
    OpenEditor({ProfileText("Default"), ProfileText("a")});
    for (const int button : {IDC_PROFILES_DELETE, IDC_PROFILES_RENAME, IDC_PROFILES_COPY, IDC_PROFILES_ADD_PROGRAM,
                             IDC_PROFILES_DELETE_PROGRAM}) {
        ExpectRefusal(button, kNoProfile);
    }
    editor->Press(IDC_PROFILES_ADD_PROGRAM);
    ExpectWarning(AnswerMessageBox("about no profile", IDOK), kNoProfile);
    EXPECT_TRUE(IsQuiet());
}

TEST_F(ProfileEditorOpeningTest, CommandsForOneProfileSayThatSeveralAreSelected) {
    OpenEditor({ProfileText("Default"), ProfileText("a"), ProfileText("b")});
    editor->SelectProfiles({1, 2});
    for (const int button :
         {IDC_PROFILES_RENAME, IDC_PROFILES_COPY, IDC_PROFILES_ADD_PROGRAM, IDC_PROFILES_DELETE_PROGRAM}) {
        ExpectRefusal(button, kManyProfiles);
    }
    EXPECT_EQ(Profiles(), (Names{L"Default", L"a", L"b"}));
}

TEST_F(ProfileEditorOpeningTest, EachOpeningStartsFromThePage) {
    OpenEditor({ProfileWithPrograms("Default", {{"a", "C:\\a.exe"}}), ProfileText("b")});
    editor->SelectProfiles({0});
    Name(IDC_PROFILES_ADD, L"new");
    CloseEditor(IDCANCEL);
    ReopenEditor();
    EXPECT_EQ(Profiles(), (Names{L"Default", L"b"}));
    EXPECT_TRUE(editor->Programs().empty());
    EXPECT_EQ(ButtonStates(), (States{true, false, false, false, true, false}));
}

TEST_F(ProfileEditorOpeningTest, CommandsDuringAMessageAreIgnored) {
    OpenEditor({ProfileText("Default"), ProfileText("a")});
    editor->SelectProfiles({1});
    Command(IDC_PROFILES_DELETE);
    for (const int button : {IDC_PROFILES_ADD, IDC_PROFILES_COPY, IDOK, IDCANCEL}) Command(button);
    EXPECT_EQ(OpenNameDialog(), nullptr);
    AnswerMessageBox("before the deletion", IDNO);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default", L"a"}));
}

TEST_F(ProfileEditorOpeningTest, ManyProfilesAreAllShown) {
    OpenEditor(NumberedProfiles(150));
    EXPECT_EQ(Profiles().size(), 150U);
    EXPECT_EQ(Profiles().back(), L"p149");
}

class AddingAProfileTest : public ProfileEditorTest {};

TEST_F(AddingAProfileTest, AppendsItWithoutSelectingIt) {
    OpenEditor({ProfileText("Default"), ProfileText("z")});
    editor->SelectProfiles({1});
    Command(IDC_PROFILES_ADD);
    const HWND dialog = AwaitNameDialog();
    sheet->Settle();
    EXPECT_EQ(TextOf(dialog), L"Add profile");
    EXPECT_EQ(TextOf(GetDlgItem(dialog, IDC_PROFILE_NAME)), L"");
    EnterName(dialog, L"a");
    CloseNameDialog(dialog, IDOK);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default", L"z", L"a"}));
    EXPECT_EQ(editor->SelectedRows(IDC_PROFILES_LIST), (std::vector<int>{1}));
}

TEST_F(AddingAProfileTest, GivesItTheDefaultsOfANewProfile) {
    OpenEditor({ProfileText("Default", {{"tbutton", "6"}, {"scrolls", "8"}})});
    Name(IDC_PROFILES_ADD, L"new");
    CloseEditor(IDOK);
    EXPECT_EQ(SavedElement("profname", 1), "new");
    EXPECT_EQ(SavedElement("tbutton", 1), "9");
    EXPECT_EQ(SavedElement("scrolls", 1), "4");
    EXPECT_EQ(SavedElement("tiltleft", 1), "33");
    EXPECT_TRUE(SavedPaths(1).empty());
}

TEST_F(AddingAProfileTest, EmptyNameDoesNothingSilently) {
    OpenEditor({ProfileText("Default")});
    Name(IDC_PROFILES_ADD, L"");
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default"}));
}

TEST_F(AddingAProfileTest, CancelledNameDoesNothing) {
    OpenEditor({ProfileText("Default")});
    Command(IDC_PROFILES_ADD);
    const HWND dialog = AwaitNameDialog();
    sheet->Settle();
    EnterName(dialog, L"new");
    CloseNameDialog(dialog, IDCANCEL);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default"}));
}

TEST_F(AddingAProfileTest, TakenNameIsRefused) {
    OpenEditor({ProfileText("Default"), ProfileText("Drawing")});
    for (const wchar_t* name : {L"Drawing", L"Default"}) {
        Name(IDC_PROFILES_ADD, name);
        ExpectWarning(AnswerMessageBox("about the name", IDOK), kNameUsed);
        EXPECT_TRUE(IsQuiet());
    }
    EXPECT_EQ(Profiles(), (Names{L"Default", L"Drawing"}));
}

TEST_F(AddingAProfileTest, NamesThatDifferOnlyInCaseCanCoexist) {
    OpenEditor({ProfileText("Default"), ProfileText("Drawing")});
    Name(IDC_PROFILES_ADD, L"DRAWING");
    Name(IDC_PROFILES_ADD, L"default");
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default", L"Drawing", L"DRAWING", L"default"}));
}

TEST_F(AddingAProfileTest, LongNameIsCutBeforeItIsCompared) {
    const std::wstring name(254, L'n');
    OpenEditor({ProfileText("Default"), ProfileText(std::string(254, 'n'))});
    Name(IDC_PROFILES_ADD, name + std::wstring(46, L'x'));
    ExpectWarning(AnswerMessageBox("about the name", IDOK), kNameUsed);
    Name(IDC_PROFILES_ADD, std::wstring(300, L'm'));
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles(), (Names{L"Default", name, std::wstring(254, L'm')}));
}

TEST_F(AddingAProfileTest, HundredthProfileIsAllowedAndTheNextRefused) {
    OpenEditor(NumberedProfiles(99));
    Name(IDC_PROFILES_ADD, L"hundredth");
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Profiles().size(), 100U);
    EXPECT_EQ(Profiles().back(), L"hundredth");
    ExpectRefusal(IDC_PROFILES_ADD, kLimitReached);
    EXPECT_EQ(Profiles().size(), 100U);
}

}  // namespace
}  // namespace kvn::test
