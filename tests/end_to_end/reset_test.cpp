// "Return to initial values".
#include <array>
#include <cstdint>

#include "resources/resource.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/end_to_end/world.h"

namespace kvn::end_to_end {
namespace {

constexpr wchar_t kQuestion[] = L"Return current settings to initial values.";

class Reset : public EndToEndTest {
protected:
    void SetUp() override {
        EndToEndTest::SetUp();
        WriteFileBytes(ProfileFile(), stored);
    }

    const std::string stored =
        ProfileFileText({{"Default", {{"rbutton", "7"}, {"tbutton", "6"}, {"scrolls", "8"}, {"hcount", "5"}}}});
};

TEST_F(Reset, CancelledChangesNothingAndLeavesApplyDisabled) {
    const Sheet sheet = OpenSheetWithService();
    sheet.Click(IDC_PANE_RESET);
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDCANCEL), kQuestion);

    // A key is handled after all that came with the click.
    WaitFor("the focus back on the button", [&] { return sheet.Focused() == IDC_PANE_RESET; });
    EXPECT_EQ(sheet.MoveFocus(1), IDC_PANE_HELP);
    EXPECT_FALSE(sheet.CanApply());
    EXPECT_EQ(sheet.Chosen(IDC_PANE_CENTER), 6);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(Reset, AcceptedShowsTheDefaultsAndWritesThemOnlyWhenApplied) {
    const Sheet sheet = OpenSheetWithService();
    sheet.Click(IDC_PANE_RESET);
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDOK), kQuestion);

    WaitFor("Apply", [&] { return sheet.CanApply(); });
    EXPECT_EQ(sheet.Chosen(IDC_PANE_RIGHT), 2);
    EXPECT_EQ(sheet.Chosen(IDC_PANE_CENTER), 9);
    EXPECT_EQ(sheet.Position(IDC_PANE_HORIZONTAL_SPEED), 4);
    EXPECT_EQ(sheet.Chosen(IDC_PANE_REVOLUTION_COUNT), 2);
    EXPECT_EQ(ModelValues(), RegistryValues());
    EXPECT_EQ(ReadFileBytes(ProfileFile()), stored);

    sheet.Apply();
    EXPECT_EQ(ModelValues(),
              (RegistryValues{
                  {"BindKeyRight", "2"}, {"BindKeyCenter", "9"}, {"HolizonScroll", "4"}, {"BindKeyHCount", "2"}}));
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({{}}));
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(Reset, ServiceSaysWhatTheInitialValuesAre) {
    const Sheet sheet = OpenSheetWithService();
    // One value is out of range and gives way to its default.
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

TEST_F(Reset, OthersThanTheServiceCannotSetTheInitialValues) {
    const Sheet sheet = OpenSheetWithService();
    std::array<std::int32_t, 11> values{1, 2, 8, 5, 6, 7, 34, 33, 9, 3, 1};
    COPYDATASTRUCT message{0, sizeof values, values.data()};
    Send(sheet.Page(), WM_COPYDATA, reinterpret_cast<WPARAM>(sheet.Window()), reinterpret_cast<LPARAM>(&message));

    sheet.Click(IDC_PANE_RESET);
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDOK), kQuestion);
    WaitFor("Apply", [&] { return sheet.CanApply(); });
    EXPECT_EQ(sheet.Chosen(IDC_PANE_CENTER), 9);
    EXPECT_EQ(sheet.Chosen(IDC_PANE_BUTTON4), 3);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

}  // namespace
}  // namespace kvn::end_to_end
