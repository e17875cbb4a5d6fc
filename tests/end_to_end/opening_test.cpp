// Opening the page: on a new mouse, on stored settings, on damaged ones, and not at all.
#include "resources/resource.h"
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/world.h"

namespace kvn::end_to_end {
namespace {

constexpr wchar_t kHostTitle[] = L"Mouse Properties";
constexpr DWORD kHostFailed = 1;

const RegistryValues kNewProfileValues{
    {"BindKeyLeft", "1"},   {"BindKeyRight", "2"},     {"BindKeyCenter", "9"},     {"BindKeyMinus", "3"},
    {"BindKeyPlus", "4"},   {"BindKeyTiltLeft", "33"}, {"BindKeyTiltRight", "34"}, {"HolizonScroll", "4"},
    {"BindKeyHSpeed", "5"}, {"BindKeyHLotate", "5"},   {"BindKeyHCount", "2"},
};

class Opening : public EndToEndTest {
protected:
    // The host says that it has no page, and gives up.
    void ExpectNoPage() {
        const Process& process = StartHost();
        const Dialog complaint(process.Id(), kHostTitle);
        EXPECT_NE(complaint.Message().find(L"has no page to show"), std::wstring::npos);
        complaint.Click(IDOK);
        EXPECT_EQ(process.WaitForExitCode(), kHostFailed);
        EXPECT_EQ(ModelValues(), RegistryValues());
        EXPECT_FALSE(Exists(ProfileFile()));
    }
};

TEST_F(Opening, FirstTimeMakesTheDefaultProfileInRegistryAndFile) {
    const Sheet sheet = OpenSheetWithService();

    EXPECT_EQ(sheet.ChosenText(IDC_PAGE_PROFILE), L"Default");
    EXPECT_EQ(sheet.Chosen(IDC_PANE_CENTER), 9);
    EXPECT_FALSE(sheet.CanApply());
    EXPECT_EQ(ModelValues(), kNewProfileValues);
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({{}}));
    EXPECT_EQ(FilesIn(SettingsFolder()), std::vector<std::wstring>{kProfileFileName});

    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
    EndService();
    EXPECT_EQ(MessagesToService(), std::vector<std::string>{kProbe});
}

TEST_F(Opening, ServiceThatRefusesTheProbeGivesNoPage) {
    StartService({L"--probe-reply", L"-1"});
    ExpectNoPage();
    EXPECT_EQ(MessagesToService(), std::vector<std::string>{"32771 (0x8003) Probe wParam=0 lParam=0 reply=-1 sent"});
}

TEST_F(Opening, WithoutAServiceThereIsNoPage) {
    ExpectNoPage();
}

TEST_F(Opening, UnknownMouseIsReportedAndThePageStillOpens) {
    StartService({L"--no-publish"});
    const Process& process = StartHost();
    EXPECT_EQ(AnswerMessage(process.Id(), IDOK), L"Failed to obtain mouse settings.");

    const Sheet sheet(process.Id());
    EXPECT_FALSE(sheet.IsEnabled(IDC_PANE_LEFT));
    EXPECT_FALSE(sheet.IsEnabled(IDC_PANE_TILT_RIGHT));
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(Opening, AbnormalValuesAreListedOnceAndReplaced) {
    WriteFileBytes(ProfileFile(), ProfileFileText({{"Default", {{"rbutton", "99"}, {"scrolls", "0"}}},
                                                   {"Drawing", {{"tiltleft", "55"}, {"hcount", "-3"}}}}));
    StartService();
    const Process& process = StartHost();
    EXPECT_EQ(AnswerMessage(process.Id(), IDOK),
              L"The following setting values are abnormal, and will be reset to the default values.\n"
              L"DefaultRight click\nDefaultHorizontal scroll speed\nDrawingLeft tilt\nDrawingNumber of revolutions\n");

    const Sheet sheet(process.Id());
    EXPECT_EQ(sheet.Chosen(IDC_PANE_RIGHT), 2);
    EXPECT_EQ(sheet.Position(IDC_PANE_HORIZONTAL_SPEED), 4);
    sheet.Close(IDOK);
    EXPECT_EQ(HostExitCode(), 0U);
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({{}, {"Drawing", {}}}));
}

TEST_F(Opening, BrokenFileIsSetAsideAndADefaultProfileMade) {
    const std::string broken = ProfileFileText({{"Precious", {}}}).substr(0, 300);
    WriteFileBytes(ProfileFile(), broken);
    const Sheet sheet = OpenSheetWithService();

    EXPECT_EQ(sheet.ChosenText(IDC_PAGE_PROFILE), L"Default");
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText({{}}));
    EXPECT_EQ(ReadFileBytes(SettingsFolder() + L"VID1234PID5678.broken-1.xml"), broken);
    EXPECT_EQ(ModelValues(), kNewProfileValues);
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

}  // namespace
}  // namespace kvn::end_to_end
