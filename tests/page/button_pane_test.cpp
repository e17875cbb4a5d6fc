// The button settings pane: what it shows, what it enables, and the rules that keep a valid assignment.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "tests/support/page_fixture.h"

namespace kvn::test {
namespace {

constexpr int kHorizontalControls[] = {1005, 1014, 1015, 1016};
constexpr int kFlyingSpeedControls[] = {1008, 1023, 1050, 1051, 1024, 1025, 1021, 1022};

class ButtonPaneTest : public PageTest {
protected:
    void ExpectEnabled(bool expected, std::initializer_list<int> controls) const {
        for (const int control : controls) EXPECT_EQ(IsEnabled(control), expected) << control;
    }
};

TEST_F(ButtonPaneTest, ShowsTheStoredSettings) {
    WriteProfiles({ProfileText("Default", {{"lbutton", "2"},
                                           {"rbutton", "1"},
                                           {"tbutton", "36"},
                                           {"button4", "38"},
                                           {"button5", "5"},
                                           {"tiltleft", "6"},
                                           {"tiltright", "7"},
                                           {"scrolls", "8"},
                                           {"hspeed", "10"},
                                           {"hlotate", "1"},
                                           {"hcount", "5"}})});
    Open();
    const int expected[] = {2, 1, 36, 38, 5, 6, 7};
    for (int i = 0; i < 7; ++i) EXPECT_EQ(Chosen(kSlotControls[i]), expected[i]) << i;
    EXPECT_EQ(Position(IDC_PANE_HORIZONTAL_SPEED), 8);
    EXPECT_EQ(Position(IDC_PANE_FLYING_SPEED), 10);
    EXPECT_EQ(Position(IDC_PANE_REVOLUTION_SPEED), 1);
    EXPECT_EQ(Chosen(IDC_PANE_REVOLUTION_COUNT), 5);
    EXPECT_FALSE(sheet->IsApplyEnabled());
}

TEST_F(ButtonPaneTest, TrackbarsHaveTheirRanges) {
    Open();
    const auto range = [&](int control) {
        const HWND trackbar = sheet->PaneControl(control);
        return std::pair(SendMessageW(trackbar, TBM_GETRANGEMIN, 0, 0), SendMessageW(trackbar, TBM_GETRANGEMAX, 0, 0));
    };
    using Range = std::pair<LRESULT, LRESULT>;
    EXPECT_EQ(range(IDC_PANE_HORIZONTAL_SPEED), (Range{1, 8}));
    EXPECT_EQ(range(IDC_PANE_FLYING_SPEED), (Range{1, 10}));
    EXPECT_EQ(range(IDC_PANE_REVOLUTION_SPEED), (Range{1, 10}));
}

TEST_F(ButtonPaneTest, OffersInvalidAndOneToFiveRevolutions) {
    Open();
    const std::vector<ComboEntry> expected = {{L"Invalid", -2}, {L"1", 1}, {L"2", 2}, {L"3", 3}, {L"4", 4}, {L"5", 5}};
    EXPECT_EQ(EntriesOf(sheet->PaneControl(IDC_PANE_REVOLUTION_COUNT)), expected);
}

TEST_F(ButtonPaneTest, CapabilitiesDecideWhatIsEnabled) {
    for (const DWORD hasTilt : {0UL, 1UL}) {
        for (const DWORD flag : {0UL, 1UL, 2UL, 0xFFFFFFFFUL}) {
            for (DWORD buttons = 0; buttons <= 7; ++buttons) {
                if (buttons != 3 && (hasTilt == 0 || flag != 0)) continue;
                SCOPED_TRACE(testing::Message() << hasTilt << " " << flag << " " << buttons);
                mouse.hasTilt = hasTilt;
                mouse.flag = flag;
                mouse.buttonCount = buttons;
                Open();
                for (const int control : kHorizontalControls) EXPECT_EQ(IsEnabled(control), hasTilt == 1) << control;
                for (DWORD i = 0; i < 5; ++i) EXPECT_EQ(IsEnabled(kSlotControls[i]), i < buttons) << i;
                ExpectEnabled(hasTilt == 1, {IDC_PANE_TILT_LEFT, IDC_PANE_TILT_RIGHT});
                const bool flies = (flag & 1) == 0;
                ExpectEnabled(flies, {1020, 1052, 1048});
                for (const int control : kFlyingSpeedControls) EXPECT_EQ(IsEnabled(control), flies) << control;
                ExpectEnabled(true, {IDC_PANE_HELP, IDC_PANE_RESET});
                Close();
            }
        }
    }
}

TEST_F(ButtonPaneTest, InvalidRevolutionsDisableTheFlyingSpeeds) {
    for (const char* count : {"-2", "0"}) {
        WriteProfiles({ProfileText("Default", {{"hcount", count}})});
        Open();
        EXPECT_EQ(Chosen(IDC_PANE_REVOLUTION_COUNT), -2);
        for (const int control : kFlyingSpeedControls) EXPECT_FALSE(IsEnabled(control)) << control;
        ExpectEnabled(true, {1020, 1052, 1048});
        for (int revolutions = 1; revolutions <= 5; ++revolutions) {
            Choose(IDC_PANE_REVOLUTION_COUNT, -2);
            for (const int control : kFlyingSpeedControls) EXPECT_FALSE(IsEnabled(control)) << control;
            Choose(IDC_PANE_REVOLUTION_COUNT, revolutions);
            for (const int control : kFlyingSpeedControls) EXPECT_TRUE(IsEnabled(control)) << control;
        }
        Close();
    }
}

TEST_F(ButtonPaneTest, MouseWithoutFlyingScrollShowsInvalidRevolutions) {
    mouse.flag = 1;
    WriteProfiles({ProfileText("Default", {{"hcount", "3"}})});
    Open();
    EXPECT_EQ(Chosen(IDC_PANE_REVOLUTION_COUNT), -2);
}

TEST_F(ButtonPaneTest, SwitchingTheProfileEnablesByItsRevolutions) {
    WriteProfiles({ProfileText("Default", {{"hcount", "-2"}}), ProfileText("Games", {{"hcount", "1"}})});
    Open();
    ChooseProfile(1);
    for (const int control : kFlyingSpeedControls) EXPECT_TRUE(IsEnabled(control)) << control;
    ChooseProfile(0);
    for (const int control : kFlyingSpeedControls) EXPECT_FALSE(IsEnabled(control)) << control;
}

TEST_F(ButtonPaneTest, LastLeftClickComesBack) {
    Open();
    Choose(IDC_PANE_LEFT, 5);
    const MessageBoxSeen seen = AnswerMessageBox("about the left click", IDOK);
    ExpectWarning(seen, L"Left Click is not set.");
    EXPECT_EQ(seen.owner, sheet->Sheet());
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(Chosen(IDC_PANE_LEFT), 1);
}

TEST_F(ButtonPaneTest, LeftClickMayMoveToAnotherControl) {
    Open();
    Choose(IDC_PANE_TILT_RIGHT, 1);
    Choose(IDC_PANE_LEFT, 5);
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(Chosen(IDC_PANE_LEFT), 5);
    Choose(IDC_PANE_TILT_RIGHT, 5);
    ExpectWarning(AnswerMessageBox("about the left click", IDOK), L"Left Click is not set.");
    sheet->Settle();
    EXPECT_EQ(Chosen(IDC_PANE_TILT_RIGHT), 1);
    EXPECT_EQ(Chosen(IDC_PANE_LEFT), 5);
}

TEST_F(ButtonPaneTest, ProfileWithoutLeftClickGetsItAtTheNextChoice) {
    WriteProfiles({ProfileText("Default", {{"lbutton", "5"}})});
    Open();
    Choose(IDC_PANE_BUTTON4, 20);
    ExpectWarning(AnswerMessageBox("about the left click", IDOK), L"Left Click is not set.");
    sheet->Settle();
    EXPECT_EQ(Chosen(IDC_PANE_BUTTON4), 1);
}

TEST_F(ButtonPaneTest, SecondGestureFunctionIsRefused) {
    Open();
    Choose(IDC_PANE_CENTER, 36);
    EXPECT_TRUE(sheet->IsQuiet());
    Choose(IDC_PANE_BUTTON4, 36);
    const MessageBoxSeen seen = AnswerMessageBox("about the gesture", IDOK);
    ExpectWarning(seen, L"Gesture is already registered.");
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(Chosen(IDC_PANE_BUTTON4), 3);
    EXPECT_EQ(Chosen(IDC_PANE_CENTER), 36);
}

TEST_F(ButtonPaneTest, RefusedGestureRestoresTheLastConfirmedChoice) {
    Open();
    Choose(IDC_PANE_CENTER, 36);
    Choose(IDC_PANE_BUTTON4, 20);
    Choose(IDC_PANE_BUTTON4, 36);
    AnswerMessageBox("about the gesture", IDOK);
    sheet->Settle();
    EXPECT_EQ(Chosen(IDC_PANE_BUTTON4), 20);
    Choose(IDC_PANE_BUTTON4, 36);
    AnswerMessageBox("about the gesture", IDOK);
    sheet->Settle();
    EXPECT_EQ(Chosen(IDC_PANE_BUTTON4), 20) << "at the second refusal";
}

TEST_F(ButtonPaneTest, RestoredLeftClickIsNotASecondGesture) {
    Open();
    Choose(IDC_PANE_CENTER, 36);
    Choose(IDC_PANE_LEFT, 36);
    ExpectWarning(AnswerMessageBox("about the left click", IDOK), L"Left Click is not set.");
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(Chosen(IDC_PANE_LEFT), 1);
    EXPECT_EQ(Chosen(IDC_PANE_CENTER), 36);
}

TEST_F(ButtonPaneTest, RestoredLeftClickCountsAsOneGestureFewerWhateverItReplaced) {
    WriteProfiles({ProfileText("Default", {{"rbutton", "36"}, {"tbutton", "36"}})});
    Open();
    Choose(IDC_PANE_LEFT, 5);
    ExpectWarning(AnswerMessageBox("about the left click", IDOK), L"Left Click is not set.");
    EXPECT_TRUE(sheet->IsQuiet());
    Choose(IDC_PANE_BUTTON4, 20);
    ExpectWarning(AnswerMessageBox("about the gesture", IDOK), L"Gesture is already registered.");
    sheet->Settle();
    EXPECT_EQ(Chosen(IDC_PANE_BUTTON4), 3);
}

TEST_F(ButtonPaneTest, GestureMayMoveToAnotherControl) {
    Open();
    Choose(IDC_PANE_CENTER, 36);
    Choose(IDC_PANE_CENTER, 9);
    Choose(IDC_PANE_BUTTON5, 36);
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(Chosen(IDC_PANE_BUTTON5), 36);
}

TEST_F(ButtonPaneTest, TabReachesEveryControlInReadingOrder) {
    Open();
    BringToFront(sheet->Sheet());
    SetFocusTo(sheet->PageControl(IDC_PAGE_PROFILE));
    std::vector<int> visited;
    HWND previous = sheet->Focus();
    for (int steps = 0; steps < 40; ++steps) {
        PressKey(VK_TAB);
        const HWND next = Await("the next control's focus", [&] {
            const HWND focus = sheet->Focus();
            return focus == previous ? nullptr : focus;
        });
        if (next == sheet->PageControl(IDC_PAGE_PROFILE)) break;
        if (IsChild(sheet->Page(), next)) visited.push_back(GetDlgCtrlID(next));
        previous = next;
    }
    const std::vector<int> expected = {IDC_PAGE_EDIT_PROFILE,
                                       IDC_PANE_LEFT,
                                       IDC_PANE_CENTER,
                                       IDC_PANE_RIGHT,
                                       IDC_PANE_TILT_LEFT,
                                       IDC_PANE_TILT_RIGHT,
                                       IDC_PANE_BUTTON5,
                                       IDC_PANE_BUTTON4,
                                       IDC_PANE_HORIZONTAL_SPEED,
                                       IDC_PANE_REVOLUTION_COUNT,
                                       IDC_PANE_REVOLUTION_SPEED,
                                       IDC_PANE_FLYING_SPEED,
                                       IDC_PANE_RESET,
                                       IDC_PANE_HELP,
                                       IDC_PAGE_TAB};
    EXPECT_EQ(visited, expected);
}

TEST_F(ButtonPaneTest, ArrowKeysMoveATrackbar) {
    Open();
    BringToFront(sheet->Sheet());
    SetFocusTo(sheet->PaneControl(IDC_PANE_HORIZONTAL_SPEED));
    PressKey(VK_RIGHT);
    EXPECT_TRUE(ComesTrue([&] { return Position(IDC_PANE_HORIZONTAL_SPEED) == 5; }));
    EXPECT_TRUE(sheet->IsApplyEnabled());
}

}  // namespace
}  // namespace kvn::test
