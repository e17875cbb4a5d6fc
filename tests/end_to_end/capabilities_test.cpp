// What a mouse or a version of Windows lacks is not offered.
#include <array>
#include <ostream>

#include "resources/resource.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/world.h"
#include "tests/support/platform.h"

namespace kvn::end_to_end {
namespace {

constexpr std::array kTiltControls{IDC_PANE_HORIZONTAL_SPEED, IDC_PANE_HORIZONTAL_SLOW, IDC_PANE_HORIZONTAL_FAST,
                                   IDC_PANE_HORIZONTAL_GROUP, IDC_PANE_TILT_LEFT,       IDC_PANE_TILT_RIGHT};
constexpr std::array kFlyingControls{
    IDC_PANE_FLYING_GROUP,          IDC_PANE_REVOLUTION_COUNT_LABEL, IDC_PANE_REVOLUTION_COUNT,
    IDC_PANE_REVOLUTION_SPEED,      IDC_PANE_FLYING_SPEED,           IDC_PANE_REVOLUTION_SPEED_SLOW,
    IDC_PANE_REVOLUTION_SPEED_FAST, IDC_PANE_FLYING_SPEED_SLOW,      IDC_PANE_FLYING_SPEED_FAST};
constexpr std::array kButtons{IDC_PANE_LEFT, IDC_PANE_RIGHT, IDC_PANE_CENTER, IDC_PANE_BUTTON4, IDC_PANE_BUTTON5};

template <typename Controls>
void ExpectEnabled(const Sheet& sheet, const Controls& controls, bool isEnabled) {
    for (const int control : controls) EXPECT_EQ(sheet.IsEnabled(control), isEnabled) << "control " << control;
}

class Capabilities : public EndToEndTest {
protected:
    void CloseCleanly(const Sheet& sheet) const {
        sheet.Close(IDCANCEL);
        EXPECT_EQ(HostExitCode(), 0U);
    }
};

TEST_F(Capabilities, FullMouseHasEverythingEnabled) {
    const Sheet sheet = OpenSheetWithService();
    ExpectEnabled(sheet, kTiltControls, true);
    ExpectEnabled(sheet, kFlyingControls, true);
    ExpectEnabled(sheet, kButtons, true);
    CloseCleanly(sheet);
}

TEST_F(Capabilities, ThreeButtonMouseWithoutTiltLosesItsOthersAndTilt) {
    const Sheet sheet = OpenSheetWithService({L"--buttons", L"3", L"--tilt", L"0"});
    ExpectEnabled(sheet, kTiltControls, false);
    ExpectEnabled(sheet, kFlyingControls, true);
    ExpectEnabled(sheet, std::array{IDC_PANE_LEFT, IDC_PANE_RIGHT, IDC_PANE_CENTER}, true);
    ExpectEnabled(sheet, std::array{IDC_PANE_BUTTON4, IDC_PANE_BUTTON5}, false);
    CloseCleanly(sheet);
}

TEST_F(Capabilities, FlagTakesFlyingScrollAway) {
    const Sheet sheet = OpenSheetWithService({L"--flag", L"1"});
    ExpectEnabled(sheet, kTiltControls, true);
    ExpectEnabled(sheet, kFlyingControls, false);
    ExpectEnabled(sheet, kButtons, true);
    CloseCleanly(sheet);
}

TEST_F(Capabilities, SlotsBeyondTheButtonsOfferNeitherGestureNorShift) {
    const Sheet sheet = OpenSheetWithService({L"--buttons", L"5"});
    EXPECT_EQ(sheet.EntryCount(IDC_PANE_BUTTON5), sheet.EntryCount(IDC_PANE_TILT_LEFT) + 2);
    EXPECT_EQ(sheet.EntryCount(IDC_PANE_BUTTON5), sheet.EntryCount(IDC_PANE_LEFT));
    CloseCleanly(sheet);
}

struct WindowsVersion {
    const wchar_t* name;
    int functionCount;
    const char* testName;
};

void PrintTo(const WindowsVersion& version, std::ostream* report) {
    *report << version.testName;
}

// Of the 49 functions twelve are for 6.2 alone, which lacks one other.
constexpr std::array kVersions{WindowsVersion{L"winxp64", 37, "WindowsXp"}, WindowsVersion{L"win7", 37, "Windows7"},
                               WindowsVersion{L"win8", 48, "Windows8"}, WindowsVersion{L"win10", 37, "Windows10"}};

class CapabilitiesOnVersion : public Capabilities, public testing::WithParamInterface<WindowsVersion> {};

TEST_P(CapabilitiesOnVersion, ChooserOffersWhatTheVersionKnows) {
    if (!test::RunsUnderWine()) GTEST_SKIP() << "Windows is the version that it is";
    const TemporaryText version(HKEY_CURRENT_USER, L"Software\\Wine\\AppDefaults\\control_panel.exe", L"Version",
                                GetParam().name);
    const Sheet sheet = OpenSheetWithService();
    EXPECT_EQ(sheet.EntryCount(IDC_PANE_CENTER), GetParam().functionCount);
    CloseCleanly(sheet);
}

INSTANTIATE_TEST_SUITE_P(, CapabilitiesOnVersion, testing::ValuesIn(kVersions),
                         [](const auto& version) { return std::string(version.param.testName); });

}  // namespace
}  // namespace kvn::end_to_end
