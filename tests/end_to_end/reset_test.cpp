// "Return to initial values".
#include "resources/resource.h"
#include "tests/end_to_end/page_world.h"
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"

namespace kvn::end_to_end {
namespace {

constexpr wchar_t kQuestion[] = L"Return current settings to initial values.";

class ResetTest : public EndToEndTest {};

TEST_F(ResetTest, ServiceProvidesTheInitialValues) {
    WriteFileBytes(ProfileFile(), ProfileFileText({{"Default", {{"tbutton", "6"}, {"scrolls", "8"}}}}));
    const Sheet sheet = OpenSheetWithService();
    // One value is out of range and is replaced by its default.
    AskService({L"--send-settings", L"1,2,8,5,99,7,34,33,9,3,1"});
    EXPECT_EQ(sheet.Chosen(IDC_PANE_CENTER), 6);
    EXPECT_FALSE(sheet.CanApply());

    sheet.Click(IDC_PANE_RESET);
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDOK), kQuestion);
    WaitFor("Apply", [&] { return sheet.CanApply(); });
    EXPECT_EQ(sheet.Chosen(IDC_PANE_LEFT), 1);
    EXPECT_EQ(sheet.Chosen(IDC_PANE_RIGHT), 2);
    EXPECT_EQ(sheet.Chosen(IDC_PANE_CENTER), 8);
    EXPECT_EQ(sheet.Chosen(IDC_PANE_BUTTON4), 5);
    EXPECT_EQ(sheet.Chosen(IDC_PANE_BUTTON5), 4);
    EXPECT_EQ(sheet.Position(IDC_PANE_HORIZONTAL_SPEED), 7);
    EXPECT_EQ(sheet.Chosen(IDC_PANE_TILT_LEFT), 34);
    EXPECT_EQ(sheet.Chosen(IDC_PANE_TILT_RIGHT), 33);
    EXPECT_EQ(sheet.Position(IDC_PANE_FLYING_SPEED), 9);
    EXPECT_EQ(sheet.Position(IDC_PANE_REVOLUTION_SPEED), 3);
    EXPECT_EQ(sheet.Chosen(IDC_PANE_REVOLUTION_COUNT), 1);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

}  // namespace
}  // namespace kvn::end_to_end
