// Several profiles, and the tabs of the page.
#include <windows.h>

#include "resources/resource.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/end_to_end/world.h"

namespace kvn::end_to_end {
namespace {

constexpr int kMaximizeWindow = 7;

class Profiles : public EndToEndTest {
protected:
    void SetUp() override {
        EndToEndTest::SetUp();
        WriteFileBytes(ProfileFile(),
                       ProfileFileText({{}, {"Drawing", {{"tbutton", "6"}, {"scrolls", "8"}, {"hcount", "5"}}}}));
    }
};

TEST_F(Profiles, SwitchingKeepsThePaneInTheOldProfileAndShowsTheOther) {
    const Sheet sheet = OpenSheetWithService();
    EXPECT_EQ(sheet.ChosenText(IDC_PAGE_PROFILE), L"Default");
    sheet.ChooseByMouse(IDC_PANE_CENTER, kMaximizeWindow);

    sheet.ChooseEntryByMouse(IDC_PAGE_PROFILE, 1);
    WaitFor("the other profile", [&] { return sheet.Chosen(IDC_PANE_CENTER) == 6; });
    EXPECT_EQ(sheet.ChosenText(IDC_PAGE_PROFILE), L"Drawing");
    EXPECT_EQ(sheet.Position(IDC_PANE_HORIZONTAL_SPEED), 8);
    EXPECT_EQ(sheet.Chosen(IDC_PANE_REVOLUTION_COUNT), 5);
    sheet.ChooseEntryByMouse(IDC_PAGE_PROFILE, 0);
    WaitFor("the first profile", [&] { return sheet.Chosen(IDC_PANE_CENTER) == kMaximizeWindow; });
    EXPECT_EQ(sheet.Position(IDC_PANE_HORIZONTAL_SPEED), 4);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(Profiles, ChosenProfileIsWrittenAndSelectedWhenThePageIsOpenedAgain) {
    StartService();
    {
        const Sheet sheet = OpenSheet();
        sheet.ChooseEntryByMouse(IDC_PAGE_PROFILE, 1);
        WaitFor("the other profile", [&] { return sheet.Chosen(IDC_PANE_CENTER) == 6; });
        sheet.Close(IDOK);
        EXPECT_EQ(HostExitCode(), 0U);
    }
    EXPECT_EQ(ModelValues(), (RegistryValues{{"BindKeyCenter", "6"}, {"HolizonScroll", "8"}, {"BindKeyHCount", "5"}}));
    EXPECT_EQ(ReadFileBytes(ProfileFile()),
              ProfileFileText({{}, {"Drawing", {{"tbutton", "6"}, {"scrolls", "8"}, {"hcount", "5"}}}}, 1));

    const Sheet sheet = OpenSheet();
    EXPECT_EQ(sheet.ChosenText(IDC_PAGE_PROFILE), L"Drawing");
    EXPECT_EQ(sheet.Chosen(IDC_PANE_CENTER), 6);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

class Tabs : public EndToEndTest {
protected:
    static void ExpectPane(const Sheet& sheet, HWND shown, HWND hidden) {
        WaitFor("the pane of the tab", [=] { return IsWindowVisible(shown) && !IsWindowVisible(hidden); });
        EXPECT_FALSE(sheet.CanApply()) << "looking is no change";
    }
};

TEST_F(Tabs, ClickShowsTheGesturePaneAndTheButtonPaneAgain) {
    const Sheet sheet = OpenSheetWithService();
    ExpectPane(sheet, sheet.ButtonPane(), sheet.GesturePane());
    sheet.ClickTab(1);
    ExpectPane(sheet, sheet.GesturePane(), sheet.ButtonPane());
    sheet.ClickTab(0);
    ExpectPane(sheet, sheet.ButtonPane(), sheet.GesturePane());
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(Tabs, ArrowKeysShowTheGesturePaneWhoseControlsTabReaches) {
    const Sheet sheet = OpenSheetWithService();
    PressKey(VK_RIGHT);
    ExpectPane(sheet, sheet.GesturePane(), sheet.ButtonPane());
    const auto isInGesturePane = [&] { return GetParent(FocusOf(sheet.Window())) == sheet.GesturePane(); };
    for (int step = 0; step < 10 && !isInGesturePane(); ++step) sheet.MoveFocus(1);
    EXPECT_TRUE(isInGesturePane());
    sheet.MoveFocusTo(IDC_PAGE_TAB);
    PressKey(VK_LEFT);
    ExpectPane(sheet, sheet.ButtonPane(), sheet.GesturePane());
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

}  // namespace
}  // namespace kvn::end_to_end
