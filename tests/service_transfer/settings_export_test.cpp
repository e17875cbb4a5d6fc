// The file to which settings are exported.
#include <algorithm>
#include <string>

#include "tests/model_windows/intercepted_rename.h"
#include "tests/service_transfer/transfer_fixture.h"

namespace kvn::service_test {
namespace {

using service::ExportSettings;
using service::kDone;
using service::kFailed;

class SettingsExportTest : public SettingsTransferTest {
protected:
    void HaveProfiles() const {
        WriteProfileFile(SettingsText(
            test::ProfileText("Default", {{"Application", "<name>n</name><path>C:\\a.exe</path>"}}) +
                test::ProfileText("<![CDATA[&#x418;&#x3042;&#x1f600;]]>",
                                  {{"lbutton", "37"},
                                   {"lbutton_etcKey", "Left Ctrl+V"},
                                   {"Gesture", "<Key>DR</Key><Function>6</Function><Memo>caf\xE9</Memo>"}}),
            "<vid>2748</vid><pid>161</pid><select_profile>1</select_profile>"));
    }
};

TEST_F(SettingsExportTest, HoldsEverythingInAscii) {
    HaveProfiles();
    const auto answer = ExportSettings(File(L"out.xml"));
    EXPECT_EQ(answer.exitCode, kDone);
    EXPECT_TRUE(Has(answer, File(L"out.xml")));
    EXPECT_TRUE(std::ranges::all_of(test::ReadFileText(File(L"out.xml")), [](char byte) { return byte > 0; }));
    EXPECT_EQ(Loaded(File(L"out.xml")), Loaded(ProfileFile()));
    EXPECT_EQ(Loaded(File(L"out.xml")).front().selectedIndex, 1);
}

TEST_F(SettingsExportTest, LeavesTheSettingsAlone) {
    HaveProfiles();
    const Stored before = WhatIsStored();
    ASSERT_EQ(ExportSettings(File(L"out.xml")).exitCode, kDone);
    EXPECT_EQ(WhatIsStored(), before);
}

TEST_F(SettingsExportTest, ExportsNothingWithoutProfilesOrMouse) {
    auto answer = ExportSettings(File(L"out.xml"));
    EXPECT_EQ(answer.exitCode, kFailed);
    EXPECT_TRUE(Has(answer, L"nothing to export")) << testing::PrintToString(answer.text);
    HaveProfiles();
    test::RemovePublished(L"VID");
    answer = ExportSettings(File(L"out.xml"));
    EXPECT_EQ(answer.exitCode, kFailed);
    EXPECT_TRUE(Has(answer, L"No mouse")) << testing::PrintToString(answer.text);
    EXPECT_FALSE(test::FileExists(File(L"out.xml")));
}

TEST_F(SettingsExportTest, ReportsThatABrokenProfileFileCannotBeRead) {
    WriteProfileFile("<data><profile>");
    const auto answer = ExportSettings(File(L"out.xml"));
    EXPECT_EQ(answer.exitCode, kFailed);
    EXPECT_TRUE(Has(answer, ProfileFile())) << testing::PrintToString(answer.text);
    EXPECT_EQ(test::ReadFileText(ProfileFile()), "<data><profile>");
}

TEST_F(SettingsExportTest, FinishesASaveThatWasCutOffBeforeItsLastStep) {
    HaveProfiles();
    ASSERT_TRUE(MoveFileW(ProfileFile().c_str(), (ProfileFile() + L".saving").c_str()));
    EXPECT_EQ(ExportSettings(File(L"out.xml")).exitCode, kDone);
    EXPECT_EQ(Loaded(File(L"out.xml")).size(), 2U);
}

TEST_F(SettingsExportTest, NamesTheProblemWithThePath) {
    HaveProfiles();
    CreateDirectoryW(File(L"folder").c_str(), nullptr);
    WriteFile("mine", L"locked.xml");
    SetFileAttributesW(File(L"locked.xml").c_str(), FILE_ATTRIBUTE_READONLY);
    struct Row {
        const wchar_t* name;
        const wchar_t* said;
    };
    for (const Row& row : {Row{L"folder", L"is a folder"}, Row{L"none\\out.xml", L"no such folder"},
                           Row{L"locked.xml", L"read-only"}, Row{L"a?b.xml", L"cannot be written"}}) {
        const auto answer = ExportSettings(File(row.name));
        EXPECT_EQ(answer.exitCode, kFailed) << testing::PrintToString(std::wstring(row.name));
        EXPECT_TRUE(Has(answer, row.said)) << testing::PrintToString(answer.text);
    }
    EXPECT_EQ(test::ReadFileText(File(L"locked.xml")), "mine");
    EXPECT_FALSE(test::FileExists(File(L"locked.xml.saving")));
    SetFileAttributesW(File(L"locked.xml").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(SettingsExportTest, ReplacesAFileAtOnceOrNotAtAll) {
    HaveProfiles();
    WriteFile("mine", L"out.xml");
    {
        const model::test::InterceptedRename refused([](HANDLE, const std::wstring&) {
            SetLastError(ERROR_DISK_FULL);
            return FALSE;
        });
        ASSERT_TRUE(refused.IsInPlace());
        EXPECT_EQ(ExportSettings(File(L"out.xml")).exitCode, kFailed);
    }
    EXPECT_EQ(test::ReadFileText(File(L"out.xml")), "mine");
    EXPECT_FALSE(test::FileExists(File(L"out.xml.saving")));
    EXPECT_EQ(ExportSettings(File(L"out.xml")).exitCode, kDone);
    EXPECT_EQ(Loaded(File(L"out.xml")), Loaded(ProfileFile()));
}

TEST_F(SettingsExportTest, RepairsSettingsThatCouldNotBeImported) {
    WriteProfileFile(
        SettingsText(test::ProfileText("A", {{"lbutton", "99"}, {"Gesture", "<Key>U</Key><Function>99</Function>"}}),
                     "<vid>1</vid><pid>1</pid><select_profile>7</select_profile>"));
    ASSERT_EQ(ExportSettings(File(L"out.xml")).exitCode, kDone);
    EXPECT_EQ(Import(File(L"out.xml")).exitCode, kDone);
}

TEST_F(SettingsExportTest, RefusesWhatItCannotRepair) {
    WriteProfileFile(SettingsText(test::ProfileText("A") + test::ProfileText("A")));
    const auto answer = ExportSettings(File(L"out.xml"));
    EXPECT_EQ(answer.exitCode, kFailed);
    EXPECT_TRUE(Has(answer, L"'A'")) << testing::PrintToString(answer.text);
    EXPECT_FALSE(test::FileExists(File(L"out.xml")));
}

}  // namespace
}  // namespace kvn::service_test
