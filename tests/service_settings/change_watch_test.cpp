#include "service/settings/change_watch.h"

#include <gtest/gtest.h>

#include <shlwapi.h>

#include <filesystem>
#include <string>

#include "tests/support/mouse_on_registry.h"
#include "tests/support/sandboxed_user.h"
#include "tests/support/waiting.h"
#include "tests/support/written_profiles.h"

namespace kvn::service {
namespace {

using kvn::test::kModelKey;

void SetNumber(const wchar_t* key, DWORD number) {
    RegSetKeyValueW(HKEY_CURRENT_USER, key, L"BindKeyLeft", REG_DWORD, &number, sizeof number);
}

bool Reports(const KeyWatch& watch) {
    return WaitForSingleObject(watch.Signal(), test::kPatienceMilliseconds) == WAIT_OBJECT_0;
}

bool HasReported(const KeyWatch& watch) {
    return WaitForSingleObject(watch.Signal(), 0) == WAIT_OBJECT_0;
}

bool Reports(const FolderWatch& watch, DWORD patience = test::kPatienceMilliseconds) {
    const std::vector<HANDLE> signals = watch.Signals();
    if (signals.empty()) return false;
    return WaitForMultipleObjects(static_cast<DWORD>(signals.size()), signals.data(), FALSE, patience) != WAIT_TIMEOUT;
}

class KeyWatchTest : public testing::Test {
    kvn::test::SandboxedUser user;
};

TEST_F(KeyWatchTest, ReportsAValueOfAnyKeyBelow) {
    SetNumber(kModelKey, 1);
    const KeyWatch watch;
    ASSERT_FALSE(HasReported(watch));
    SetNumber(kModelKey, 2);
    EXPECT_TRUE(Reports(watch));
}

TEST_F(KeyWatchTest, ReportsAValueOfTheBaseKey) {
    SetNumber(kModelKey, 1);
    const KeyWatch watch;
    SetNumber(kvn::test::kMouseKey, 2);
    EXPECT_TRUE(Reports(watch));
}

TEST_F(KeyWatchTest, ReportsTheModelsKeyWhenItIsMade) {
    SetNumber(kvn::test::kMouseKey, 1);
    const KeyWatch watch;
    SetNumber(kModelKey, 2);
    EXPECT_TRUE(Reports(watch));
}

TEST_F(KeyWatchTest, ReportsAKeyThatIsMadeFromNothing) {
    const KeyWatch watch;
    SetNumber(kModelKey, 2);
    ASSERT_TRUE(Reports(watch));
    const KeyWatch next;
    SetNumber(kModelKey, 3);
    EXPECT_TRUE(Reports(next));
}

TEST_F(KeyWatchTest, ReportsAKeyThatGoesAndComesBack) {
    SetNumber(kModelKey, 1);
    const KeyWatch watch;
    SHDeleteKeyW(HKEY_CURRENT_USER, L"Software\\KORVEN");
    ASSERT_TRUE(Reports(watch));
    const KeyWatch withoutKey;
    SetNumber(kModelKey, 2);
    EXPECT_TRUE(Reports(withoutKey));
}

TEST_F(KeyWatchTest, ANewOneIsNotDisturbedByTheEndOfTheOld) {
    SetNumber(kModelKey, 1);
    KeyWatch watch;
    for (int time = 0; time < 3; ++time) watch = KeyWatch();
    EXPECT_FALSE(HasReported(watch));
}

class FolderWatchTest : public testing::Test {
protected:
    std::wstring Folder() const { return user.SettingsFolder() + L'\\'; }
    void MakeFolder() const { std::filesystem::create_directories(Folder()); }

private:
    kvn::test::SandboxedUser user;
};

TEST_F(FolderWatchTest, WatchesNothingByItself) {
    EXPECT_TRUE(FolderWatch().Signals().empty());
}

TEST_F(FolderWatchTest, ReportsAFileThatComesChangesAndGoes) {
    MakeFolder();
    const std::wstring path = Folder() + L"file.xml";
    const FolderWatch made(Folder());
    ASSERT_FALSE(Reports(made, 0));
    kvn::test::WriteFileText(path, "one");
    ASSERT_TRUE(Reports(made));
    const FolderWatch changed(Folder());
    kvn::test::WriteFileText(path, "three");
    ASSERT_TRUE(Reports(changed));
    const FolderWatch renamed(Folder());
    ASSERT_TRUE(MoveFileW(path.c_str(), (path + L"x").c_str()));
    ASSERT_TRUE(Reports(renamed));
    const FolderWatch deleted(Folder());
    ASSERT_TRUE(DeleteFileW((path + L"x").c_str()));
    EXPECT_TRUE(Reports(deleted));
}

TEST_F(FolderWatchTest, ReportsAFolderThatIsMadeFromNothing) {
    const FolderWatch watch(Folder());
    MakeFolder();
    EXPECT_TRUE(Reports(watch));
}

TEST_F(FolderWatchTest, ReportsAFolderThatGoesWithItsFiles) {
    kvn::test::WriteFileText(Folder() + L"file.xml", "");
    const FolderWatch watch(Folder());
    std::filesystem::remove_all(Folder());
    EXPECT_TRUE(Reports(watch));
}

TEST_F(FolderWatchTest, WatchesWhateverThereIsOfAnImpossiblePath) {
    EXPECT_TRUE(FolderWatch(L"").Signals().empty());
    EXPECT_TRUE(FolderWatch(L"\\").Signals().empty());
    EXPECT_TRUE(FolderWatch(L"Q:\\no\\such\\folder\\at\\all").Signals().empty());
}

}  // namespace
}  // namespace kvn::service
