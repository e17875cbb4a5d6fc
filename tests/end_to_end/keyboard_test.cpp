// The page without a mouse.
#include <array>

#include "resources/resource.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/page_world.h"
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/support/combo_contents.h"

namespace kvn::end_to_end {
namespace {

constexpr int kSheetTabs = 0x3020;

// From the page's tab control around the sheet and back to it; in the button pane row by row, in reading order. Apply
// is disabled and left out.
constexpr std::array kRing{IDOK,
                           IDCANCEL,
                           kSheetTabs,
                           IDC_PAGE_PROFILE,
                           IDC_PAGE_EDIT_PROFILE,
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

class KeyboardTest : public EndToEndTest {
protected:
    void SetUp() override {
        EndToEndTest::SetUp();
        WriteFileBytes(ProfileFile(), ProfileFileText({{}}));
    }
};

TEST_F(KeyboardTest, TabVisitsEveryControlOfPageAndPaneAndShiftTabGoesBack) {
    const Sheet sheet = OpenSheetWithService();
    for (const int control : kRing) EXPECT_EQ(sheet.MoveFocus(1), control);
    ASSERT_EQ(sheet.Focused(), IDC_PAGE_TAB);
    for (std::size_t i = kRing.size(); i-- > 0;) {
        EXPECT_EQ(sheet.MoveFocus(-1), i == 0 ? IDC_PAGE_TAB : kRing[i - 1]);
    }
    EXPECT_FALSE(sheet.CanApply()) << "moving the focus changes nothing";
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(KeyboardTest, ListOpenedByKeysIsChosenFromAndOkIsReachedByTab) {
    const Sheet sheet = OpenSheetWithService();
    sheet.MoveFocusTo(IDC_PANE_CENTER);
    const HWND chooser = sheet.Control(IDC_PANE_CENTER);
    PressTogether({VK_LMENU, VK_DOWN});
    WaitFor("the list to open", [&] { return test::IsListOpen(chooser); });
    PressKey(VK_HOME);
    PressKey(VK_DOWN);
    PressKey(VK_RETURN);
    WaitFor("the list to close", [&] { return !test::IsListOpen(chooser); });
    EXPECT_EQ(sheet.Chosen(IDC_PANE_CENTER), 2);
    EXPECT_EQ(sheet.Focused(), IDC_PANE_CENTER);

    sheet.MoveFocusTo(IDOK);
    PressKey(VK_SPACE);
    EXPECT_EQ(HostExitCode(), 0U);
    EXPECT_EQ(ModelValues(), (RegistryValues{{"BindKeyCenter", "2"}}));
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({{"Default", {{"tbutton", "2"}}}}));
}

}  // namespace
}  // namespace kvn::end_to_end
