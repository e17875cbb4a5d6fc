// The keyboard focus is never lost: a control that is hidden or disabled passes it on.
#include <windows.h>

#include <commctrl.h>

#include "tests/support/tab_contents.h"

#include "tests/support/gesture_fixture.h"

namespace kvn::test {
namespace {

class FocusTest : public GestureTest {
protected:
    // Clicks the tab with the mouse.
    void ClickTab(int index) const {
        const HWND tab = sheet->PageControl(IDC_PAGE_TAB);
        const RECT place = PlaceOfTab(tab, index);
        const LPARAM point = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
        SendMessageW(tab, WM_LBUTTONDOWN, MK_LBUTTON, point);
        SendMessageW(tab, WM_LBUTTONUP, 0, point);
        sheet->Settle();
    }
    // Selects the tab as another program does.
    void SelectTab(int index) const {
        sheet->Run([=, this] {
            const HWND tab = sheet->PageControl(IDC_PAGE_TAB);
            SendMessageW(tab, TCM_SETCURSEL, static_cast<WPARAM>(index), 0);
            const NMHDR header{tab, IDC_PAGE_TAB, TCN_SELCHANGE};
            SendMessageW(sheet->Page(), WM_NOTIFY, IDC_PAGE_TAB, reinterpret_cast<LPARAM>(&header));
        });
    }
    void ExpectUsableFocus() const {
        const HWND focus = sheet->Focus();
        ASSERT_NE(focus, nullptr);
        EXPECT_TRUE(IsWindowVisible(focus)) << GetDlgCtrlID(focus);
        EXPECT_TRUE(IsWindowEnabled(focus)) << GetDlgCtrlID(focus);
    }
};

TEST_F(FocusTest, LeavesTheButtonPaneWhenItIsHidden) {
    Open();
    BringToFront(sheet->Sheet());
    SetFocusTo(sheet->PaneControl(IDC_PANE_RIGHT));
    ClickTab(1);
    ASSERT_FALSE(IsWindowVisible(sheet->ButtonPane()));
    EXPECT_EQ(sheet->Focus(), sheet->PageControl(IDC_PAGE_TAB));
}

TEST_F(FocusTest, LeavesTheGesturePaneWhenItIsHidden) {
    OpenWith(kTwoGestures);
    ShowGestureTab();
    BringToFront(sheet->Sheet());
    SetFocusTo(List());
    ClickTab(0);
    ASSERT_FALSE(IsWindowVisible(sheet->GesturePane()));
    EXPECT_EQ(sheet->Focus(), sheet->PageControl(IDC_PAGE_TAB));
}

TEST_F(FocusTest, LeavesTheButtonPaneWhenAProgramSelectsTheOtherTab) {
    Open();
    BringToFront(sheet->Sheet());
    SetFocusTo(sheet->PaneControl(IDC_PANE_RIGHT));
    SelectTab(1);
    ASSERT_FALSE(IsWindowVisible(sheet->ButtonPane()));
    EXPECT_EQ(sheet->Focus(), sheet->PageControl(IDC_PAGE_TAB));
}

TEST_F(FocusTest, StaysOutsideThePanesWhenTheyChange) {
    Open();
    BringToFront(sheet->Sheet());
    const HWND profiles = sheet->PageControl(IDC_PAGE_PROFILE);
    SetFocusTo(profiles);
    SelectTab(1);
    ASSERT_FALSE(IsWindowVisible(sheet->ButtonPane()));
    EXPECT_EQ(sheet->Focus(), profiles);
}

TEST_F(FocusTest, IsOnAUsableControlWhateverTheMouseLacks) {
    WriteProfiles({ProfileText("Default")});
    mouse.hasTilt = 0;
    mouse.flag = 1;
    mouse.buttonCount = 0;
    Open();
    BringToFront(sheet->Sheet());
    ExpectUsableFocus();
}

TEST_F(FocusTest, StaysWhenAProfileWithoutFlyingScrollIsChosen) {
    WriteProfiles({ProfileText("Default"), ProfileText("Games", {{"hcount", "-2"}})});
    Open();
    BringToFront(sheet->Sheet());
    SetFocusTo(sheet->PageControl(IDC_PAGE_PROFILE));
    ChooseProfile(1);
    ASSERT_FALSE(IsEnabled(IDC_PANE_FLYING_SPEED));
    ExpectUsableFocus();
}

TEST_F(FocusTest, LeavesTheButtonThatDeletesTheLastGesture) {
    OpenWith({{"U", 3, "", ""}});
    ShowGestureTab();
    BringToFront(sheet->Sheet());
    SelectRow(0);
    SetFocusTo(PaneButton(IDC_GESTURES_DELETE));
    PressKey(VK_SPACE);
    AnswerMessageBox("the question", IDYES);
    Await("the deletion", [this] { return RowCount() == 0; });
    sheet->Settle();
    EXPECT_FALSE(IsButtonEnabled(IDC_GESTURES_DELETE));
    ExpectUsableFocus();
}

}  // namespace
}  // namespace kvn::test
