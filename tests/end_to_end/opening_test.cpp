// Opening the page: on a new mouse, on stored settings, on damaged ones, and not at all.
#include "resources/resource.h"
#include "tests/end_to_end/page_world.h"
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/stored_state.h"

namespace kvn::end_to_end {
namespace {

constexpr wchar_t kHostTitle[] = L"Mouse Properties";
constexpr DWORD kHostFailed = 1;

const RegistryValues kNewProfileValues{
    {"BindKeyLeft", "1"},   {"BindKeyRight", "2"},     {"BindKeyCenter", "9"},     {"BindKeyMinus", "3"},
    {"BindKeyPlus", "4"},   {"BindKeyTiltLeft", "33"}, {"BindKeyTiltRight", "34"}, {"HolizonScroll", "4"},
    {"BindKeyHSpeed", "5"}, {"BindKeyHLotate", "5"},   {"BindKeyHCount", "2"},
};

class OpeningThePageTest : public EndToEndTest {
protected:
    // Expects that the host reports that it has no page, and gives up.
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

TEST_F(OpeningThePageTest, FirstTimeMakesTheDefaultProfileInRegistryAndFile) {
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

TEST_F(OpeningThePageTest, WithoutAServiceThereIsNoPage) {
    ExpectNoPage();
}

}  // namespace
}  // namespace kvn::end_to_end
