// The tab "Allocate gesture function".
#include <windows.h>

#include <commctrl.h>

#include "tests/support/gesture_fixture.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

using namespace std::string_literals;
const std::vector<GestureText> kThreeGestures{
    {"U", 3, "one page back", ""}, {"RD", 37, "paste", "Left Ctrl+V"}, {"LURD", 37, "", ""}};

class GesturePaneTest : public GestureTest {
protected:
    // Double-clicks in the list, in the middle of a row's second column or below the last row.
    void DoubleClick(int row) const {
        const RECT area = LabelOfRow(List(), row);
        const POINT place{120, row < RowCount() ? (area.top + area.bottom) / 2 : 200};
        POINT onScreen = place;
        ClientToScreen(List(), &onScreen);
        SetCursorPos(onScreen.x, onScreen.y);
        const LPARAM position = MAKELPARAM(place.x, place.y);
        PostMessageW(List(), WM_LBUTTONDOWN, MK_LBUTTON, position);
        PostMessageW(List(), WM_LBUTTONUP, 0, position);
        PostMessageW(List(), WM_LBUTTONDBLCLK, MK_LBUTTON, position);
        PostMessageW(List(), WM_LBUTTONUP, 0, position);
    }
    void ExpectButtons(bool edit, bool remove) const {
        sheet->Settle();
        EXPECT_EQ(IsButtonEnabled(IDC_GESTURES_EDIT), edit);
        EXPECT_EQ(IsButtonEnabled(IDC_GESTURES_DELETE), remove);
        EXPECT_TRUE(IsButtonEnabled(IDC_GESTURES_ADD));
    }
    void ExpectNothingSelected(int control) const {
        Command(control);
        ExpectWarning(AnswerMessageBox("that nothing is selected", IDOK), L"A gesture has not been selected.");
        EXPECT_TRUE(sheet->IsQuiet());
    }
    void Delete(int answer) const {
        Command(IDC_GESTURES_DELETE);
        const MessageBoxSeen seen = AnswerMessageBox("whether to delete", answer);
        EXPECT_EQ(seen.caption, kCaption);
        EXPECT_EQ(seen.text, L"Are you sure you want to delete?");
        EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONEXCLAMATION));
        EXPECT_EQ(seen.buttons, (std::vector<int>{IDYES, IDNO}));
        EXPECT_TRUE(sheet->IsQuiet());
    }
};

TEST_F(GesturePaneTest, ColumnsHaveTheirTitlesAndWidths) {
    Open();
    EXPECT_EQ(ColumnsOf(List()), (std::vector<ListColumn>{{L"Gesture", 70, LVCFMT_LEFT},
                                                          {L"Functions", 125, LVCFMT_LEFT},
                                                          {L"Instructions", 172, LVCFMT_LEFT}}));
}

TEST_F(GesturePaneTest, ListSelectsFullRowsAndKeepsShowingThem) {
    Open();
    EXPECT_TRUE(SendMessageW(List(), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_FULLROWSELECT);
    EXPECT_EQ(GetWindowLongW(List(), GWL_STYLE) & (LVS_TYPEMASK | LVS_SHOWSELALWAYS | LVS_SINGLESEL),
              LVS_REPORT | LVS_SHOWSELALWAYS);
}

TEST_F(GesturePaneTest, RowsShowStrokeFunctionAndMemo) {
    OpenWith({{"U", 3, "one page back", ""},
              {"RD", 37, "paste", "Left Ctrl+V"},
              {"LURD", 37, "", ""},
              {"D", 0, "nothing", ""},
              {"L", 35, "no name", ""},
              {"R", 5, "keys of no use", "A"}});
    ASSERT_EQ(RowCount(), 6);
    EXPECT_EQ(Row(0), (RowTexts{L"U", L"Back (Internet Explorer)", L"one page back"}));
    EXPECT_EQ(Row(1), (RowTexts{L"RD", L"Left Ctrl+V", L"paste"}));
    EXPECT_EQ(Row(2), (RowTexts{L"LURD", L"Arbitrary key", L""}));
    EXPECT_EQ(Row(3), (RowTexts{L"D", L" ", L"nothing"}));
    EXPECT_EQ(Row(4), (RowTexts{L"L", L"", L"no name"}));
    EXPECT_EQ(Row(5), (RowTexts{L"R", L"Switch applications", L"keys of no use"}));
}

TEST_F(GesturePaneTest, TheButtonsFollowTheSelection) {
    OpenWith(kThreeGestures);
    ExpectButtons(false, false);
    SelectRow(1);
    ExpectButtons(true, true);
    SelectRow(0);
    ExpectButtons(false, true);
    SelectRow(2);
    ExpectButtons(false, true);
    SelectRow(0, false);
    SelectRow(1, false);
    ExpectButtons(true, true);
    SelectRow(2, false);
    ExpectButtons(false, false);
}

TEST_F(GesturePaneTest, NeitherShowingNorSelectingRowsChangesThePage) {
    OpenWith(kThreeGestures);
    EXPECT_FALSE(sheet->IsApplyEnabled());
    SelectRow(1);
    EXPECT_FALSE(sheet->IsApplyEnabled());
}

TEST_F(GesturePaneTest, DeleteRemovesAllSelectedGestures) {
    OpenWith({{"U", 1, "a", ""}, {"D", 2, "b", ""}, {"L", 3, "c", ""}, {"R", 4, "d", ""}, {"UD", 5, "e", ""}});
    for (const int row : {0, 2, 3}) SelectRow(row);
    Delete(IDYES);
    ASSERT_EQ(RowCount(), 2);
    EXPECT_EQ(Row(0)[0], L"D");
    EXPECT_EQ(Row(1)[0], L"UD");
    ExpectButtons(false, false);
    EXPECT_TRUE(sheet->IsApplyEnabled());
    ApplySuccessfully();
    EXPECT_EQ(StoredGestures(), StoredList(L"D\t2\tb\t\0UD\t5\te\t\0\0"s));
}

TEST_F(GesturePaneTest, ADeclinedDeleteKeepsEverything) {
    OpenWith(kThreeGestures);
    SelectRow(0);
    SelectRow(2);
    Delete(IDNO);
    EXPECT_EQ(RowCount(), 3);
    ExpectButtons(false, true);
    ForgetModelValues();
    ApplySuccessfully();
    EXPECT_EQ(ModelValues().count(L"Gesture"), 0U);
    EXPECT_NE(ReadFileText(ProfilePath()).find("LURD"), std::string::npos);
}

TEST_F(GesturePaneTest, TheFocusGoesToTheListWhenTheFocusedButtonIsDisabled) {
    OpenWith(kThreeGestures);
    ShowGestureTab();
    SelectRow(0);
    SetFocusTo(PaneButton(IDC_GESTURES_DELETE));
    Delete(IDYES);
    EXPECT_EQ(sheet->Focus(), List());
}

TEST_F(GesturePaneTest, EditAndDeleteNeedASelection) {
    OpenWith(kThreeGestures);
    ExpectNothingSelected(IDC_GESTURES_EDIT);
    ExpectNothingSelected(IDC_GESTURES_DELETE);
    EXPECT_EQ(RowCount(), 3);
}

TEST_F(GesturePaneTest, TheHundredAndFirstGestureIsRefused) {
    OpenWith(ManyGestures(100));
    Command(IDC_GESTURES_ADD);
    ExpectWarning(AnswerMessageBox("the limit", IDOK), L"It is not possible to register more than 100 items.");
    EXPECT_TRUE(sheet->IsQuiet());
}

TEST_F(GesturePaneTest, TheLimitIsCheckedBeforeTheGestureFunction) {
    const std::string full = GestureProfile(ManyGestures(100));
    WriteProfiles({full.substr(0, full.find("<tbutton>")) + full.substr(full.find("</tbutton>") + 10)});
    Open();
    Command(IDC_GESTURES_ADD);
    ExpectWarning(AnswerMessageBox("the limit", IDOK), L"It is not possible to register more than 100 items.");
    EXPECT_TRUE(sheet->IsQuiet());
}

TEST_F(GesturePaneTest, ASecondEditorDoesNotOpen) {
    OpenWith(kThreeGestures);
    const HWND editor = OpenEditor();
    Command(IDC_GESTURES_ADD);
    sheet->Settle();
    CloseEditor(editor, IDCANCEL);
    EXPECT_EQ(service->CountOf(platform::ServiceMessage::GestureEditBegin), 1U);
}

TEST_F(GesturePaneTest, TheHundredthGestureIsAllowed) {
    OpenWith(ManyGestures(99));
    CloseEditor(OpenEditor(), IDCANCEL);
}

TEST_F(GesturePaneTest, WithoutTheGestureFunctionTheEditorDoesNotOpen) {
    WriteProfiles({ProfileText("Default")});
    Open();
    Command(IDC_GESTURES_ADD);
    ExpectWarning(AnswerMessageBox("what is missing", IDOK),
                  L"To register and edit gestures, allocate gesture functions to the mouse buttons.");
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(service->CountOf(platform::ServiceMessage::GestureEditBegin), 0U);
}

TEST_F(GesturePaneTest, AChoiceThatIsNotAppliedYetCounts) {
    WriteProfiles({ProfileText("Default")});
    Open();
    Choose(IDC_PANE_BUTTON4, 36);
    const HWND editor = OpenEditor();
    ClickStroke(editor);
    Tick(editor);
    EXPECT_EQ(service->Calls().back().lParam, 8);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GesturePaneTest, ADoubleClickOnARowEditsIt) {
    OpenWith(kThreeGestures);
    ShowGestureTab();
    DoubleClick(1);
    const HWND editor = Await("the gesture editor", [this] { return OpenEditorWindow(); });
    EXPECT_EQ(Stroke(editor), L"RD");
    CloseEditor(editor, IDCANCEL);
    EXPECT_TRUE(sheet->IsApplyEnabled());
}

TEST_F(GesturePaneTest, ADoubleClickBesideTheRowsDoesNothing) {
    OpenWith(kThreeGestures);
    ShowGestureTab();
    DoubleClick(3);
    sheet->Settle();
    EXPECT_TRUE(sheet->IsQuiet());
}

TEST_F(GesturePaneTest, AnotherProfileShowsItsOwnGestures) {
    WriteProfiles({GestureProfile(kThreeGestures), GestureProfile({{"DU", 22, "delete", ""}}, "Games")});
    Open();
    SelectRow(1);
    ChooseProfile(1);
    ASSERT_EQ(RowCount(), 1);
    EXPECT_EQ(Row(0), (RowTexts{L"DU", L"Delete", L"delete"}));
    ExpectButtons(false, false);
    ChooseProfile(0);
    EXPECT_EQ(RowCount(), 3);
}

TEST_F(GesturePaneTest, ThePaneHasNoFrameToPaint) {
    Open();
    EXPECT_EQ(SendMessageW(sheet->GesturePane(), WM_NCPAINT, 1, 0), 1);
}

}  // namespace
}  // namespace kvn::test
