// Shortcuts whose program only Windows Installer knows.
#include "profiles/shortcut_target.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <msi.h>

#include "platform/com_pointer.h"
#include "tests/profiles/installed_product.h"
#include "tests/profiles/installer_stand_in.h"
#include "tests/profiles/start_menu.h"
#include "tests/support/replaced_import.h"

namespace kvn::test {
namespace {

using profiles::AdvertisedProgram;

class AdvertisedProgramTest : public testing::Test {
protected:
    const ScratchFolder folder;
    const platform::ComApartment apartment;
};

TEST_F(AdvertisedProgramTest, IsTheOneThatTheInstallerInstalled) {
    const SandboxedHive machine(HKEY_LOCAL_MACHINE);
    const InstalledProduct product(folder);
    ASSERT_NE(GetFileAttributesW(product.Program().c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(AdvertisedProgram(folder.AddShortcut(L"a.lnk", product.AdvertisedTarget())), product.Program());
}

TEST_F(AdvertisedProgramTest, IsNoneBehindAnOrdinaryShortcut) {
    EXPECT_EQ(AdvertisedProgram(folder.AddShortcut(L"a.lnk", L"C:\\windows\\notepad.exe")), L"");
    EXPECT_EQ(AdvertisedProgram(folder.AddFile(L"b.lnk", "garbage")), L"");
    EXPECT_EQ(AdvertisedProgram(folder.PathOf(L"missing.lnk")), L"");
}

TEST(AdvertisedProgramAnswerTest, IsAskedForByProductAndComponent) {
    const InstallerStandIn installer;
    EXPECT_EQ(AdvertisedProgram(L"a.lnk"), installer->path);
    EXPECT_EQ(installer->asked, L"a.lnk|" + std::wstring(38, L'p') + L"|" + std::wstring(38, L'c') + L"|260\n");
}

TEST(AdvertisedProgramAnswerTest, MayRunFromItsSource) {
    const InstallerStandIn installer;
    installer->pathAnswer = INSTALLSTATE_SOURCE;
    EXPECT_EQ(AdvertisedProgram(L"a.lnk"), installer->path);
}

TEST(AdvertisedProgramAnswerTest, IsNoneWithoutAnAdvertisement) {
    const InstallerStandIn installer;
    installer->targetAnswer = ERROR_FUNCTION_FAILED;
    EXPECT_EQ(AdvertisedProgram(L"a.lnk"), L"");
    EXPECT_EQ(installer->asked, L"a.lnk\n");
}

TEST(AdvertisedProgramAnswerTest, IsNoneWhereItIsNotInstalled) {
    const InstallerStandIn installer;
    for (const INSTALLSTATE state : {INSTALLSTATE_ABSENT, INSTALLSTATE_UNKNOWN, INSTALLSTATE_MOREDATA,
                                     INSTALLSTATE_INVALIDARG, INSTALLSTATE_ADVERTISED}) {
        installer->pathAnswer = state;
        EXPECT_EQ(AdvertisedProgram(L"a.lnk"), L"") << state;
    }
}

TEST(AdvertisedProgramWithoutInstallerTest, IsNone) {
    const ReplacedImport<"GetProcAddress", decltype(GetProcAddress)> find(GetModuleHandleW(nullptr),
                                                                          [](HMODULE, LPCSTR) { return FARPROC{}; });
    ASSERT_TRUE(find.IsInPlace());
    EXPECT_EQ(AdvertisedProgram(L"a.lnk"), L"");
}

}  // namespace
}  // namespace kvn::test
