#include "service/settings/profile_store.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <string>

#include "model/registry_values.h"
#include "tests/support/held_file.h"
#include "tests/support/mouse_on_registry.h"
#include "tests/support/sandboxed_user.h"
#include "tests/support/written_profiles.h"

namespace kvn::service {
namespace {

using kvn::test::kModelKey;
using kvn::test::ProfileFileText;
using kvn::test::ProfileText;
using model::ButtonSlot;
using model::SettingField;

constexpr std::uint32_t kVid = 0x0ABC;
constexpr std::uint32_t kPid = 0x00A1;

class ProfileStoreTest : public testing::Test {
protected:
    std::wstring Path() const { return user.SettingsFolder() + L"\\VID0abcPID00a1.xml"; }
    void WriteFile(const std::string& text) const { kvn::test::WriteFileText(Path(), text); }
    static void SetValue(const wchar_t* name, DWORD type, const void* data, std::size_t bytes,
                         const wchar_t* key = kModelKey) {
        RegSetKeyValueW(HKEY_CURRENT_USER, key, name, type, data, static_cast<DWORD>(bytes));
    }
    static void SetNumber(const wchar_t* name, DWORD number, const wchar_t* key = kModelKey) {
        SetValue(name, REG_DWORD, &number, sizeof number, key);
    }
    static void SetMachineWideCenter(DWORD code) {
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, model::kDefaultBindKey, model::kDefaultCenterValue, REG_DWORD, &code,
                        sizeof code);
    }
    static std::int32_t Number(const ProfileStore& store, SettingField field, std::size_t profile = 0) {
        return store.SettingsOf(profile)[field];
    }

private:
    kvn::test::SandboxedUser user;
    kvn::test::SandboxedHive machine{HKEY_LOCAL_MACHINE};
};

TEST_F(ProfileStoreTest, WithoutAnythingHasANewProfileThatDoesNotFly) {
    SetMachineWideCenter(24);
    ProfileStore store(kVid, kPid);
    EXPECT_TRUE(store.Read());
    ASSERT_EQ(store.Profiles().size(), 1U);
    EXPECT_EQ(store.Profiles()[0].name, L"Default");
    model::ProfileSettings expected = model::DefaultProfileRecord(24).settings;
    expected[SettingField::FlyingRevolutionCount] = model::kUnsetValue;
    EXPECT_EQ(store.SettingsOf(0), expected);
}

TEST_F(ProfileStoreTest, TheRegistryHoldsTheSelectedProfile) {
    WriteFile(ProfileFileText(
        {ProfileText("Default", {{"lbutton", "5"}}), ProfileText("Other", {{"lbutton", "6"}, {"rbutton", "7"}})}, 1));
    SetNumber(L"BindKeyLeft", 10);
    SetValue(L"Gesture", REG_MULTI_SZ, L"UD\t6\t\t\0", 18);
    SetValue(L"BindKeyCenter_etcKey", REG_SZ, L"Left Ctrl+V", 22);
    ProfileStore store(kVid, kPid);
    ASSERT_TRUE(store.Read());
    ASSERT_EQ(store.Selected(), 1U);
    EXPECT_EQ(Number(store, SettingField::Left, 1), 10);
    EXPECT_EQ(Number(store, SettingField::Right, 1), 7);
    EXPECT_EQ(Number(store, SettingField::Left, 0), 5);
    EXPECT_EQ(store.SettingsOf(1).gestures, (std::vector<model::GestureEntry>{{L"UD", 6, L"", {}}}));
    EXPECT_EQ(store.SettingsOf(1).etcKeys[ButtonSlot::Center], (model::EtcKey{{162, 'V', model::kNoKey}}));
    EXPECT_TRUE(store.SettingsOf(0).gestures.empty());
}

TEST_F(ProfileStoreTest, ANumberIsReadWhateverItsType) {
    SetValue(L"BindKeyLeft", REG_BINARY, "\x0b", 1);
    SetValue(L"BindKeyRight", REG_QWORD, "\x0b\0\0\0\0\0\0\0", 8);
    SetValue(L"BindKeyMinus", REG_SZ, L"\x0b", 2);
    SetValue(L"BindKeyPlus", REG_NONE, nullptr, 0);
    ProfileStore store(kVid, kPid);
    ASSERT_TRUE(store.Read());
    EXPECT_EQ(Number(store, SettingField::Left), 11);
    EXPECT_EQ(Number(store, SettingField::Right), 2);
    EXPECT_EQ(Number(store, SettingField::Button4), 11);
    EXPECT_EQ(Number(store, SettingField::Button5), 0);
}

TEST_F(ProfileStoreTest, AHugeValueIsMissing) {
    WriteFile(ProfileFileText({ProfileText("Default", {{"lbutton_etcKey", "V"}})}));
    const std::wstring huge(1'000'000, L'V');
    SetValue(L"BindKeyLeft_etcKey", REG_SZ, huge.data(), huge.size() * sizeof(wchar_t));
    SetValue(L"Gesture", REG_MULTI_SZ, huge.data(), huge.size() * sizeof(wchar_t));
    ProfileStore store(kVid, kPid);
    ASSERT_TRUE(store.Read());
    EXPECT_EQ(store.SettingsOf(0).etcKeys[ButtonSlot::Left], (model::EtcKey{{'V', model::kNoKey, model::kNoKey}}));
    EXPECT_TRUE(store.SettingsOf(0).gestures.empty());
}

TEST_F(ProfileStoreTest, ANumberOfTheFileThatIsOutOfItsRangeIsANewProfiles) {
    SetMachineWideCenter(24);
    WriteFile(ProfileFileText({ProfileText("Default", {{"lbutton", "99"}, {"tbutton", "-1"}, {"hcount", "77"}}),
                               ProfileText("Other", {{"scrolls", "9"}})}));
    ProfileStore store(kVid, kPid);
    ASSERT_TRUE(store.Read());
    EXPECT_EQ(Number(store, SettingField::Left), 1);
    EXPECT_EQ(Number(store, SettingField::Center), 24);
    EXPECT_EQ(Number(store, SettingField::FlyingRevolutionCount), model::kUnsetValue);
    EXPECT_EQ(Number(store, SettingField::HorizontalScrollSpeed, 1), 4);
}

TEST_F(ProfileStoreTest, AMachineWideFunctionThatIsNoneCountsForNothing) {
    SetMachineWideCenter(99);
    ProfileStore store(kVid, kPid);
    ASSERT_TRUE(store.Read());
    EXPECT_EQ(Number(store, SettingField::Center), 9);
}

TEST_F(ProfileStoreTest, ASelectionBeyondTheProfilesIsTheFirst) {
    for (const int selected : {-1, 1, 70000}) {
        WriteFile(ProfileFileText({ProfileText("Default")}, selected));
        ProfileStore store(kVid, kPid);
        EXPECT_TRUE(store.Read());
        EXPECT_EQ(store.Selected(), 0U) << selected;
    }
}

TEST_F(ProfileStoreTest, AFileThatCannotBeReadLeavesTheProfiles) {
    WriteFile(ProfileFileText({ProfileText("Default"), ProfileText("Other")}, 1));
    ProfileStore store(kVid, kPid);
    ASSERT_TRUE(store.Read());
    for (const std::string broken : {"", "<data>", "<data><vid>1</vid></data>", "no XML", "\0\0\0"}) {
        WriteFile(broken);
        EXPECT_FALSE(store.Read()) << broken;
        EXPECT_EQ(store.Profiles().size(), 2U) << broken;
        EXPECT_EQ(store.Selected(), 1U) << broken;
    }
}

TEST_F(ProfileStoreTest, AFileThatIsHeldLeavesTheProfiles) {
    WriteFile(ProfileFileText({ProfileText("Default"), ProfileText("Other")}));
    ProfileStore store(kVid, kPid);
    ASSERT_TRUE(store.Read());
    {
        const platform::UniqueFile held = test::HoldFile(Path());
        EXPECT_FALSE(store.Read());
        EXPECT_EQ(store.Profiles().size(), 2U);
    }
    EXPECT_TRUE(store.Read());
}

TEST_F(ProfileStoreTest, AFolderInThePlaceOfTheFileCannotBeRead) {
    kvn::test::WriteFileText(Path() + L"\\file", "");
    EXPECT_FALSE(ProfileStore(kVid, kPid).Read());
}

TEST_F(ProfileStoreTest, AFileThatIsDeletedLeavesOneProfile) {
    WriteFile(ProfileFileText({ProfileText("A", {{"Application", "<path>C:\\a.exe</path>"}}), ProfileText("B")}, 1));
    ProfileStore store(kVid, kPid);
    ASSERT_TRUE(store.Read());
    DeleteFileW(Path().c_str());
    EXPECT_TRUE(store.Read());
    ASSERT_EQ(store.Profiles().size(), 1U);
    EXPECT_EQ(store.Selected(), 0U);
    EXPECT_TRUE(store.Profiles()[0].settings.applications.empty());
}

TEST_F(ProfileStoreTest, WithoutAnIdTheBaseKeyCounts) {
    SetNumber(L"BindKeyLeft", 10, kvn::test::kMouseKey);
    ProfileStore store(0, 0);
    EXPECT_TRUE(store.Read());
    EXPECT_EQ(Number(store, SettingField::Left), 10);
}

TEST_F(ProfileStoreTest, FindsWhatThePageHasSetAsideSince) {
    const std::wstring first = Path().substr(0, Path().size() - 4) + L".broken-1.xml";
    const std::wstring second = Path().substr(0, Path().size() - 4) + L".broken-2.xml";
    kvn::test::WriteFileText(first, "");
    ProfileStore store(kVid, kPid);
    EXPECT_TRUE(store.TakeNewlySetAside().empty());
    kvn::test::WriteFileText(second, "");
    EXPECT_EQ(store.TakeNewlySetAside(), std::vector{second});
    EXPECT_TRUE(store.TakeNewlySetAside().empty());
}

TEST_F(ProfileStoreTest, WritesNothing) {
    kvn::test::WriteFileText(Path() + L".saving", ProfileFileText({ProfileText("Default")}));
    ProfileStore store(kVid, kPid);
    EXPECT_TRUE(store.Read());
    EXPECT_FALSE(kvn::test::FileExists(Path()));
    EXPECT_TRUE(kvn::test::FileExists(Path() + L".saving"));
    EXPECT_TRUE(kvn::test::StoredValues(kModelKey).empty());
}

}  // namespace
}  // namespace kvn::service
