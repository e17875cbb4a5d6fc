// The hub reads again when the registry or the profile file changes, and reports problems with the file.
#include <gtest/gtest.h>

#include <shlwapi.h>

#include <chrono>
#include <filesystem>

#include "model/profile_file.h"
#include "service/settings/reading_schedule.h"
#include "tests/service_settings/hub_fixture.h"
#include "tests/support/held_file.h"

namespace kvn::service {
namespace {

using kvn::test::ComesTrue;
using kvn::test::ProfileFileText;
using kvn::test::ProfileText;

model::ProfileRecord Named(const std::wstring& name) {
    model::ProfileRecord record = model::DefaultProfileRecord();
    record.name = name;
    return record;
}

// Many profiles, the last of which has this name.
model::ProfileSet LargeList(const std::wstring& lastName) {
    model::ProfileSet list(200, Named(std::wstring(1'000, L'x')));
    list.push_back(Named(lastName));
    return list;
}

// Whether it can be opened as a rename over it does.
bool CanBeReplaced(const std::wstring& path) {
    constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const platform::UniqueFile file(
        CreateFileW(path.c_str(), DELETE, kAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return static_cast<bool>(file);
}

class SettingsHubReadingTest : public HubFixture {};

TEST_F(SettingsHubReadingTest, FollowsTheRegistry) {
    StartReadHub();
    SetNumber(L"BindKeyLeft", 10);
    ASSERT_TRUE(LeftFunctionBecomes(10));
    SetNumber(L"BindKeyLeft", 11);
    ASSERT_TRUE(LeftFunctionBecomes(11));
    SHDeleteKeyW(HKEY_CURRENT_USER, kModelKey);
    ASSERT_TRUE(LeftFunctionBecomes(1));
    SetNumber(L"BindKeyLeft", 12);
    ASSERT_TRUE(LeftFunctionBecomes(12));
}

TEST_F(SettingsHubReadingTest, FollowsARegistryKeyThatGoesWithItsParents) {
    StartReadHub();
    for (const DWORD code : {10, 11}) {
        SetNumber(L"BindKeyLeft", code);
        ASSERT_TRUE(LeftFunctionBecomes(static_cast<model::FunctionCode>(code)));
        SHDeleteKeyW(HKEY_CURRENT_USER, L"Software\\KORVEN");
        ASSERT_TRUE(LeftFunctionBecomes(1));
    }
}

TEST_F(SettingsHubReadingTest, FollowsTheFile) {
    StartReadHub();
    WriteFile({ProfileText("Default", {{"lbutton", "5"}})});
    ASSERT_TRUE(LeftFunctionBecomes(5));
    WriteFile({ProfileText("Default", {{"lbutton", "6"}})});
    ASSERT_TRUE(LeftFunctionBecomes(6));
    DeleteFileW(FilePath().c_str());
    ASSERT_TRUE(LeftFunctionBecomes(1));
    EXPECT_TRUE(Problems().empty());
}

TEST_F(SettingsHubReadingTest, TheSettingsAreInForceWhenItReportsThatItHasReread) {
    StartReadHub();
    for (int code = 3; code < 20; ++code) {
        WriteFile({ProfileText("Default", {{"lbutton", std::to_string(code)}})});
        Hub().Reread();
        ASSERT_TRUE(ComesTrue([this] { return Hub().HasReread(); }));
        ASSERT_EQ(LeftFunction(), code);
    }
}

TEST_F(SettingsHubReadingTest, FollowsAFileWhoseFolderGoesAndComesBack) {
    WriteFile({ProfileText("Default", {{"lbutton", "5"}})});
    StartReadHub();
    for (const int code : {6, 7}) {
        std::filesystem::remove_all(User().SettingsFolder());
        // The folder disappears once the hub has noticed and closed it.
        ASSERT_TRUE(ComesTrue([this] { return !kvn::test::FileExists(User().SettingsFolder()); }));
        ASSERT_TRUE(LeftFunctionBecomes(1));
        WriteFile({ProfileText("Default", {{"lbutton", std::to_string(code)}})});
        ASSERT_TRUE(LeftFunctionBecomes(code));
    }
}

// If the machine pauses between the changes, the hub reads more than once; then the changes are made again.
TEST_F(SettingsHubReadingTest, ReadsOnceAfterSeveralChanges) {
    using std::chrono::steady_clock;
    constexpr std::chrono::milliseconds kTogether{ReadingSchedule::kAfterLastChange};
    constexpr std::int32_t kLastSpeed = 8;
    StartReadHub();
    std::size_t reports = 0;
    std::int32_t speed = Heard().back().settings.horizontalSpeed;
    steady_clock::duration taken = kTogether;
    while (taken >= kTogether && speed < kLastSpeed) {
        reports = Heard().size();
        ++speed;
        const auto begin = steady_clock::now();
        for (const wchar_t* value : {L"BindKeyLeft", L"BindKeyRight", L"BindKeyPlus", L"HolizonScroll"}) {
            SetNumber(value, static_cast<DWORD>(speed));
        }
        taken = steady_clock::now() - begin;
        ASSERT_TRUE(ComesTrue([&] { return Heard().back().settings.horizontalSpeed == speed; }));
    }
    EndHub();
    EXPECT_EQ(Heard().size(), reports + 1);
}

TEST_F(SettingsHubReadingTest, ReadsDuringChangesThatDoNotEnd) {
    StartReadHub();
    DWORD count = 0;
    EXPECT_TRUE(ComesTrue([&] {
        SetNumber(L"BindKeyLeft", 10 + ++count % 2);
        Sleep(20);
        return LeftFunction() != 1;
    }));
}

TEST_F(SettingsHubReadingTest, ReportsOnceThatTheFileCannotBeRead) {
    WriteFile({ProfileText("Default", {{"lbutton", "5"}})});
    StartReadHub();
    WriteBytes("broken");
    ASSERT_TRUE(ComesTrue([this] { return !Problems().empty(); }));
    WriteBytes("broken, too");
    SetNumber(L"BindKeyRight", 10);
    ASSERT_TRUE(ComesTrue([this] { return Hub().InForce().settings.functions[model::ButtonSlot::Right] == 10; }));
    EXPECT_EQ(LeftFunction(), 5);
    EXPECT_EQ(Problems(), (std::vector{Problem{SettingsProblem::FileUnreadable, FilePath()}}));
}

TEST_F(SettingsHubReadingTest, ReportsItAgainIfTheFileWasReadableMeanwhile) {
    WriteBytes("broken");
    StartReadHub();
    ASSERT_TRUE(ComesTrue([this] { return Problems().size() == 1; }));
    WriteFile({ProfileText("Default", {{"lbutton", "5"}})});
    ASSERT_TRUE(LeftFunctionBecomes(5));
    WriteBytes("broken");
    EXPECT_TRUE(ComesTrue([this] { return Problems().size() == 2; }));
}

TEST_F(SettingsHubReadingTest, ReportsFilesThatThePageHasSetAside) {
    WriteBytes("broken");
    StartReadHub();
    const std::wstring aside = FilePath().substr(0, FilePath().size() - 4) + L".broken-1.xml";
    ASSERT_TRUE(ComesTrue([&] { return MoveFileW(FilePath().c_str(), aside.c_str()) != FALSE; }));
    const Problem expected{SettingsProblem::FileSetAside, aside};
    EXPECT_TRUE(ComesTrue([&] { return !Problems().empty() && Problems().back() == expected; }));
}

TEST_F(SettingsHubReadingTest, ReadsAFileThatWasHeldOnceItIsFree) {
    WriteFile({ProfileText("Default", {{"lbutton", "5"}})});
    {
        const platform::UniqueFile held = test::HoldFile(FilePath());
        StartReadHub();
        ASSERT_TRUE(ComesTrue([this] { return !Problems().empty(); }));
        EXPECT_EQ(LeftFunction(), 1);
    }
    EXPECT_TRUE(LeftFunctionBecomes(5));
}

// A save gives up after a fifth of a second.
TEST_F(SettingsHubReadingTest, NeverBlocksASave) {
    MakeFolder();
    StartReadHub();
    for (int time = 1; time <= 30; ++time) {
        ASSERT_TRUE(model::SaveProfileFile(FilePath(), LargeList(L"Last" + std::to_wstring(time)))) << time;
        Hub().Reread();
    }
    EXPECT_TRUE(ComesTrue([this] {
        const auto names = Hub().ProfileNames();
        return !names.empty() && names.back() == L"Last30";
    }));
    EXPECT_TRUE(Problems().empty());
}

TEST_F(SettingsHubReadingTest, SharesTheFileThatItReadsWithASave) {
    constexpr std::size_t kBytes = std::size_t{8} << 20U;
    WriteBytes(ProfileFileText({ProfileText("Default")}) + "<!--" + std::string(kBytes, 'x') + "-->");
    StartReadHub();
    for (int time = 0; time < 3; ++time) {
        Hub().Reread();
        while (!Hub().HasReread()) ASSERT_TRUE(CanBeReplaced(FilePath())) << "error " << GetLastError();
    }
    EXPECT_TRUE(Problems().empty());
}

TEST_F(SettingsHubReadingTest, AnswersWhileItReadsAHugeFile) {
    StartReadHub();
    std::string huge;
    for (int profile = 0; profile < 20'000; ++profile) huge += ProfileText("P" + std::to_string(profile));
    WriteFile({huge});
    ULONGLONG longest = 0;
    const ULONGLONG written = GetTickCount64();
    const auto isRead = [&] {
        const ULONGLONG begin = GetTickCount64();
        static_cast<void>(Hub().InForce());
        longest = std::max(longest, GetTickCount64() - begin);
        return Hub().ProfileNames().size() == 20'000;
    };
    ASSERT_TRUE(ComesTrue(isRead, 3 * kvn::test::kPatience));
    EXPECT_LT(longest, (GetTickCount64() - written) / 2) << "of the milliseconds until it was read";
}

}  // namespace
}  // namespace kvn::service
