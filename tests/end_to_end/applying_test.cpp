// OK, Apply and Cancel: what reaches the registry, the profile file and the service.
#include "resources/resource.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/registry_lock.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/waiting.h"
#include "tests/end_to_end/world.h"

namespace kvn::end_to_end {
namespace {

constexpr int kLeftClick = 1;
constexpr int kSwitchApplications = 5;
constexpr int kCloseWindow = 6;
constexpr int kGesture = 36;

// With a profile file in place the page has nothing to write into the registry when it opens.
class Applying : public EndToEndTest {
protected:
    void SetUp() override {
        EndToEndTest::SetUp();
        WriteFileBytes(ProfileFile(), ProfileFileText({{}}));
    }
};

TEST_F(Applying, ChangedWheelButtonIsWrittenAloneThenSavedAndAnnounced) {
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

TEST_F(Applying, ReopenedPageShowsWhatWasApplied) {
    StartService();
    {
        const Sheet sheet = OpenSheet();
        sheet.ChooseByMouse(IDC_PANE_BUTTON4, kSwitchApplications);
        sheet.MoveFocusTo(IDC_PANE_FLYING_SPEED);
        PressKey(VK_RIGHT);
        WaitFor("the slider to move", [&] { return sheet.Position(IDC_PANE_FLYING_SPEED) == 6; });
        sheet.Close(IDOK);
        EXPECT_EQ(HostExitCode(), 0U);
    }
    EXPECT_EQ(ModelValues(), (RegistryValues{{"BindKeyMinus", "5"}, {"BindKeyHSpeed", "6"}}));
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({{"Default", {{"button4", "5"}, {"hspeed", "6"}}}}));

    const Sheet sheet = OpenSheet();
    EXPECT_EQ(sheet.Chosen(IDC_PANE_BUTTON4), kSwitchApplications);
    EXPECT_EQ(sheet.Position(IDC_PANE_FLYING_SPEED), 6);
    EXPECT_FALSE(sheet.CanApply());
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(Applying, OkWithoutAChangeStillSavesTheFileAndTellsTheService) {
    const Sheet sheet = OpenSheetWithService();
    DeleteFileW(ProfileFile().c_str());
    sheet.Close(IDOK);

    EXPECT_EQ(HostExitCode(), 0U);
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({{}}));
    EXPECT_EQ(ModelValues(), RegistryValues());
    EndService();
    EXPECT_EQ(MessagesToService(), (std::vector<std::string>{kProbe, kSettingsChanged}));
}

TEST_F(Applying, CancelForgetsWhatWasChosen) {
    const Sheet sheet = OpenSheetWithService();
    sheet.ChooseByMouse(IDC_PANE_CENTER, kCloseWindow);
    EXPECT_TRUE(sheet.CanApply());
    sheet.Close(IDCANCEL);

    EXPECT_EQ(HostExitCode(), 0U);
    EXPECT_EQ(ModelValues(), RegistryValues());
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({{}}));
    EndService();
    EXPECT_EQ(MessagesToService(), std::vector<std::string>{kProbe});
}

TEST_F(Applying, InvalidNumberOfRevolutionsGreysTheFlyingScrollAndIsStoredAsUnset) {
    const Sheet sheet = OpenSheetWithService();
    EXPECT_TRUE(sheet.IsEnabled(IDC_PANE_FLYING_SPEED));
    sheet.ChooseEntryByMouse(IDC_PANE_REVOLUTION_COUNT, 0);
    EXPECT_EQ(sheet.ChosenText(IDC_PANE_REVOLUTION_COUNT), L"Invalid");
    WaitFor("the sliders to be greyed",
            [&] { return !sheet.IsEnabled(IDC_PANE_FLYING_SPEED) && !sheet.IsEnabled(IDC_PANE_REVOLUTION_SPEED); });

    sheet.Close(IDOK);
    EXPECT_EQ(HostExitCode(), 0U);
    EXPECT_EQ(ModelValues(), (RegistryValues{{"BindKeyHCount", "4294967294"}}));
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({{"Default", {{"hcount", "-2"}}}}));
}

TEST_F(Applying, RefusedRegistryWriteKeepsTheSheetOpenAndTheServiceUntold) {
    const Sheet sheet = OpenSheetWithService();
    sheet.ChooseByMouse(IDC_PANE_CENTER, kCloseWindow);
    {
        const RegistryLock lock(HKEY_CURRENT_USER, kModelKey);
        sheet.Click(IDOK);
        EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDOK), L"Settings failed.");
        EXPECT_TRUE(sheet.CanApply());
    }
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({{}}));
    EXPECT_EQ(MessagesToService(), std::vector<std::string>{kProbe});

    sheet.Close(IDOK);
    EXPECT_EQ(HostExitCode(), 0U);
    EXPECT_EQ(ModelValues(), (RegistryValues{{"BindKeyCenter", "6"}}));
}

TEST_F(Applying, LastLeftClickCannotBeGivenAway) {
    const Sheet sheet = OpenSheetWithService();
    sheet.ChooseByMouse(IDC_PANE_LEFT, kCloseWindow);
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDOK), L"Left Click is not set.");
    WaitFor("Left click to be chosen again", [&] { return sheet.Chosen(IDC_PANE_LEFT) == kLeftClick; });
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(Applying, SecondGestureButtonIsRefused) {
    const Sheet sheet = OpenSheetWithService();
    sheet.ChooseByMouse(IDC_PANE_CENTER, kGesture);
    WaitFor("the first gesture button", [&] { return sheet.Chosen(IDC_PANE_CENTER) == kGesture; });
    sheet.ChooseByMouse(IDC_PANE_BUTTON5, kGesture);
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDOK), L"Gesture is already registered.");
    WaitFor("the earlier choice", [&] { return sheet.Chosen(IDC_PANE_BUTTON5) == 4; });
    EXPECT_EQ(sheet.Chosen(IDC_PANE_CENTER), kGesture);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

}  // namespace
}  // namespace kvn::end_to_end
