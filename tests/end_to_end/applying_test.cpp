// What is chosen by mouse and keys: what reaches the registry, the profile file and the service.
#include "resources/resource.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/page_world.h"
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/support/function_codes.h"

namespace kvn::end_to_end {
namespace {

using enum test::Function;

// With a profile file in place the page has nothing to write into the registry when it opens.
class ApplyingTest : public EndToEndTest {
protected:
    void SetUp() override {
        EndToEndTest::SetUp();
        WriteFileBytes(ProfileFile(), ProfileFileText({{}}));
    }
};

TEST_F(ApplyingTest, ChangedWheelButtonIsWrittenAloneThenSavedAndAnnounced) {
    const Sheet sheet = OpenSheetWithService();
    EXPECT_FALSE(sheet.CanApply());
    sheet.ChooseByMouse(IDC_PANE_CENTER, kCloseWindow);
    EXPECT_EQ(sheet.ChosenText(IDC_PANE_CENTER), L"Close the window");
    EXPECT_EQ(ModelValues(), RegistryValues());

    sheet.Apply();
    EXPECT_EQ(ModelValues(), (RegistryValues{{"BindKeyCenter", "6"}}));
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({{"Default", {{"tbutton", "6"}}}}));

    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
    EndService();
    EXPECT_EQ(MessagesToService(), (std::vector<std::string>{kProbe, kSettingsChanged}));
}

TEST_F(ApplyingTest, ReopenedPageShowsWhatWasApplied) {
    StartService();
    {
        const Sheet sheet = OpenSheet();
        sheet.ChooseByMouse(IDC_PANE_BUTTON4, kSwitchPrograms);
        sheet.MoveFocusTo(IDC_PANE_FLYING_SPEED);
        PressKey(VK_RIGHT);
        WaitFor("the slider to move", [&] { return sheet.Position(IDC_PANE_FLYING_SPEED) == 6; });
        sheet.Close(IDOK);
        EXPECT_EQ(HostExitCode(), 0U);
    }
    EXPECT_EQ(ModelValues(), (RegistryValues{{"BindKeyMinus", "5"}, {"BindKeyHSpeed", "6"}}));
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({{"Default", {{"button4", "5"}, {"hspeed", "6"}}}}));

    const Sheet sheet = OpenSheet();
    EXPECT_EQ(sheet.Chosen(IDC_PANE_BUTTON4), kSwitchPrograms);
    EXPECT_EQ(sheet.Position(IDC_PANE_FLYING_SPEED), 6);
    EXPECT_FALSE(sheet.CanApply());
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

}  // namespace
}  // namespace kvn::end_to_end
