// The page as one of the registered handlers of the Mouse control panel.
#include "resources/resource.h"
#include "tests/end_to_end/page_world.h"
#include "tests/support/platform.h"

namespace kvn::end_to_end {
namespace {

class RegisteredPageTest : public EndToEndTest {
protected:
    void SetUp() override {
        if (!test::MayWriteMachineKeys()) GTEST_SKIP() << "an administrator registers the page";
        EndToEndTest::SetUp();
    }
    void TearDown() override {
        if (!test::MayWriteMachineKeys()) return;
        EXPECT_EQ(RunHost({L"--unregister"}), 0U);
        EndToEndTest::TearDown();
    }
};

TEST_F(RegisteredPageTest, RegisteredPageIsFoundWithoutNamingTheModule) {
    ASSERT_EQ(RunHost({L"--register", ModulePath()}), 0U);
    StartService();
    const Sheet sheet = OpenSheet(WithHandlers());
    EXPECT_EQ(sheet.ChosenText(IDC_PAGE_PROFILE), L"Default");
    sheet.Close(IDOK);
    EXPECT_EQ(HostExitCode(), 0U);
    EndService();
    EXPECT_EQ(MessagesToService(), (std::vector<std::string>{kProbe, kSettingsChanged}));
}

TEST_F(RegisteredPageTest, UnregisteredPageIsNotFound) {
    ASSERT_EQ(RunHost({L"--register", ModulePath()}), 0U);
    ASSERT_EQ(RunHost({L"--unregister"}), 0U);
    StartService();
    const Process& process = StartHost(WithHandlers());
    const Dialog complaint(process.Id(), L"Mouse Properties");
    EXPECT_NE(complaint.Message().find(L"No property-sheet handler is registered"), std::wstring::npos);
    complaint.Click(IDOK);
    EXPECT_EQ(process.WaitForExitCode(), 1U);
    EXPECT_EQ(MessagesToService(), std::vector<std::string>());
}

}  // namespace
}  // namespace kvn::end_to_end
