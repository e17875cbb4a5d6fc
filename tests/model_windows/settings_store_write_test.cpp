// Writing a model's settings to registry and disk.
#include <algorithm>
#include <cstring>

#include "model/profile_file.h"
#include "tests/model_windows/genuine_function.h"
#include "tests/model_windows/locked_key.h"
#include "tests/model_windows/settings_store_fixture.h"
#include "tests/model_windows/value_names.h"
#include "tests/support/held_file.h"
#include "tests/support/replaced_import.h"

namespace kvn::model {
namespace {

using namespace std::string_literals;

using kvn::test::ReplacedImport;
using kvn::test::StoredNumber;
using kvn::test::StoredValue;

using SetValue = ReplacedImport<"RegSetValueExW", LSTATUS(HKEY, LPCWSTR, DWORD, DWORD, const BYTE*, DWORD)>;

StoredValue Text(DWORD type, const std::wstring& text) {
    StoredValue value{type, std::vector<BYTE>(text.size() * sizeof(wchar_t))};
    std::memcpy(value.bytes.data(), text.data(), value.bytes.size());
    return value;
}

// The loaded settings of a mouse with all registry values.
class LoadedSettings : public SettingsStore {
protected:
    void SetUp() override { ASSERT_TRUE(LoadMouseSettings(settings)); }

    // Changes every value of the selected profile.
    void ChangeEverything() {
        for (std::int32_t& number : settings.Selected().values.items) ++number;
        for (EtcKey& keys : settings.Selected().etcKeys.items) keys.codes = {162, 86, kNoKey};
        settings.Selected().applications = {{L"Editor", L"C:\\\x41F\\e.exe"}};
        settings.Selected().gestures = {{L"UD", 37, L"memo", {{162, 86, kNoKey}}}};
    }

    std::map<std::wstring, StoredValue> Everything() const {
        const StoredValue keys = Text(REG_SZ, L"Left Ctrl+V");
        return {{L"BindKeyLeft", StoredNumber(2)},
                {L"BindKeyRight", StoredNumber(3)},
                {L"BindKeyCenter", StoredNumber(10)},
                {L"BindKeyMinus", StoredNumber(4)},
                {L"BindKeyPlus", StoredNumber(5)},
                {L"HolizonScroll", StoredNumber(5)},
                {L"BindKeyTiltLeft", StoredNumber(34)},
                {L"BindKeyTiltRight", StoredNumber(35)},
                {L"BindKeyHSpeed", StoredNumber(6)},
                {L"BindKeyHLotate", StoredNumber(6)},
                {L"BindKeyHCount", StoredNumber(3)},
                {L"BindKeyLeft_etcKey", keys},
                {L"BindKeyRight_etcKey", keys},
                {L"BindKeyCenter_etcKey", keys},
                {L"BindKeyMinus_etcKey", keys},
                {L"BindKeyPlus_etcKey", keys},
                {L"BindKeyTiltLeft_etcKey", keys},
                {L"BindKeyTiltRight_etcKey", keys},
                {L"Gesture", Text(REG_MULTI_SZ, L"UD\t37\tmemo\tLeft Ctrl+V\0\0"s)},
                {L"ProfileApp", Text(REG_MULTI_SZ, L"Editor\tC:\\\x41F\\e.exe\0\0"s)}};
    }

    // The names of the values that the next write sets; the named one fails.
    std::vector<std::wstring> WriteAndFail(const std::wstring& failing, bool expected) {
        std::vector<std::wstring> names;
        const auto genuine = test::Genuine<decltype(RegSetValueExW)>(L"advapi32", "RegSetValueExW");
        const SetValue set(GetModuleHandleW(nullptr), [&](HKEY key, LPCWSTR name, DWORD zero, DWORD type,
                                                          const BYTE* data, DWORD bytes) {
            names.emplace_back(name);
            return failing == name ? LSTATUS{ERROR_ACCESS_DENIED} : genuine(key, name, zero, type, data, bytes);
        });
        EXPECT_EQ(WriteRegistryValues(settings), expected);
        return names;
    }
};

using WriteRegistryValuesTest = LoadedSettings;
using SaveProfilesTest = LoadedSettings;

TEST_F(WriteRegistryValuesTest, WritesNothingWhenNothingChanged) {
    EXPECT_TRUE(WriteAndFail(L"", true).empty());
}

TEST_F(WriteRegistryValuesTest, WritesWhatChangedAndRemembersIt) {
    settings.Selected()[SettingField::Center] = 36;
    EXPECT_EQ(WriteAndFail(L"", true), std::vector<std::wstring>{L"BindKeyCenter"});
    EXPECT_EQ(StoredValues().at(L"BindKeyCenter"), StoredNumber(36));
    EXPECT_TRUE(WriteAndFail(L"", true).empty());
}

TEST_F(WriteRegistryValuesTest, WritesEveryValueInItsOrderAndExactBytes) {
    ChangeEverything();
    const std::vector<std::wstring> order =
        test::NamesOf(ChangedValues(settings.registrySettings, settings.Selected()));
    ASSERT_EQ(order.size(), 20U);
    EXPECT_EQ(WriteAndFail(L"", true), order);
    EXPECT_EQ(StoredValues(), Everything());
}

TEST_F(WriteRegistryValuesTest, AnEmptiedListIsTwoBytes) {
    ChangeEverything();
    EXPECT_TRUE(WriteRegistryValues(settings));
    settings.Selected().gestures.clear();
    settings.Selected().applications.clear();
    EXPECT_TRUE(WriteRegistryValues(settings));
    EXPECT_EQ(StoredValues().at(L"Gesture"), (StoredValue{REG_MULTI_SZ, {0, 0}}));
    EXPECT_EQ(StoredValues().at(L"ProfileApp"), (StoredValue{REG_MULTI_SZ, {0, 0}}));
}

TEST_F(WriteRegistryValuesTest, GoesOnAfterAFailureAndRemembersNothing) {
    ChangeEverything();
    for (const wchar_t* failing : {L"BindKeyLeft", L"BindKeyCenter_etcKey", L"ProfileApp"}) {
        EXPECT_EQ(WriteAndFail(failing, false).size(), 20U) << failing;
    }
    EXPECT_EQ(WriteAndFail(L"", true).size(), 20U);
    EXPECT_EQ(StoredValues(), Everything());
    EXPECT_TRUE(WriteAndFail(L"", true).empty());
}

TEST_F(WriteRegistryValuesTest, FailsWhenTheKeyMayNotBeWritten) {
    const auto before = StoredValues();
    ChangeEverything();
    {
        const test::LockedKey locked(HKEY_CURRENT_USER, kModelKey, test::kReadingAllowed);
        EXPECT_FALSE(WriteRegistryValues(settings));
    }
    EXPECT_EQ(StoredValues(), before);
    EXPECT_TRUE(WriteRegistryValues(settings));
    EXPECT_EQ(StoredValues(), Everything());
}

TEST_F(SaveProfilesTest, StoresTheModelsIdsAndTheSelection) {
    settings.profiles.push_back(settings.profiles[0]);
    settings.profiles[1].name = L"Games";
    settings.selectedProfile = 1;
    EXPECT_TRUE(SaveProfiles(settings));
    ProfileSet list;
    ASSERT_EQ(LoadProfileFile(Path(), list), 2U);
    EXPECT_EQ(list[0].vid, 0x0ABC);
    EXPECT_EQ(list[0].pid, 0x00A1);
    EXPECT_EQ(list[0].selectedIndex, 1);
    EXPECT_EQ(list[1].name, L"Games");

    MouseSettings again;
    again.device = settings.device;
    EXPECT_TRUE(LoadMouseSettings(again));
    EXPECT_EQ(again.selectedProfile, 1U);
    EXPECT_EQ(again.Selected(), settings.Selected());
}

TEST_F(SaveProfilesTest, AFailureLeavesTheOldFile) {
    const std::string bytes = test::ReadBytes(Path());
    const ReplacedImport<"Sleep", void(DWORD)> sleep(GetModuleHandleW(nullptr), [](DWORD) {});
    {
        const platform::UniqueFile held = kvn::test::HoldFile(Path(), FILE_SHARE_READ);
        settings.profiles[0].name = L"new";
        EXPECT_FALSE(SaveProfiles(settings));
    }
    EXPECT_EQ(test::ReadBytes(Path()), bytes);
    EXPECT_EQ(FilesInFolder(), std::vector<std::wstring>{kFileName});
    EXPECT_TRUE(SaveProfiles(settings));
    EXPECT_NE(test::ReadBytes(Path()), bytes);
}

TEST_F(SaveProfilesTest, AFolderThatIsGoneIsNotCreatedAgain) {
    ASSERT_TRUE(DeleteFileW(Path().c_str()));
    ASSERT_TRUE(RemoveDirectoryW(User().SettingsFolder().c_str()));
    const auto before = StoredValues();
    EXPECT_FALSE(SaveProfiles(settings));
    EXPECT_EQ(test::NamesIn(User().ApplicationData()), std::vector<std::wstring>{L"KORVEN"});
    EXPECT_TRUE(test::NamesIn(User().ApplicationData() + L"\\KORVEN").empty());
    EXPECT_EQ(StoredValues(), before);

    MouseSettings again = settings;
    EXPECT_TRUE(LoadMouseSettings(again));
    EXPECT_EQ(FilesInFolder(), std::vector<std::wstring>{kFileName});
}

TEST_F(SaveProfilesTest, AReadOnlyFileStaysAsItIs) {
    const std::string bytes = test::ReadBytes(Path());
    ASSERT_TRUE(SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_READONLY));
    settings.profiles[0].name = L"new";
    EXPECT_FALSE(SaveProfiles(settings));
    EXPECT_EQ(test::ReadBytes(Path()), bytes);
    EXPECT_EQ(FilesInFolder(), std::vector<std::wstring>{kFileName});
    SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(SaveProfilesTest, AFileThatWasRemovedIsWrittenAgain) {
    ASSERT_TRUE(DeleteFileW(Path().c_str()));
    EXPECT_TRUE(SaveProfiles(settings));
    EXPECT_EQ(FilesInFolder(), std::vector<std::wstring>{kFileName});
}

}  // namespace
}  // namespace kvn::model
