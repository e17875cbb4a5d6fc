// Loading the settings of a mouse, and the default profile if it has no file.
#include <shlobj.h>

#include <algorithm>
#include <limits>
#include <new>

#include "tests/model_windows/genuine_function.h"
#include "tests/model_windows/locked_key.h"
#include "tests/model_windows/settings_store_fixture.h"
#include "tests/model_windows/value_names.h"
#include "tests/support/held_file.h"
#include "tests/support/replaced_import.h"

namespace kvn::model {
namespace {

using kvn::test::ReplacedImport;
using kvn::test::StoredNumber;
using kvn::test::StoredValue;

using LoadMouseSettingsTest = SettingsStore;

std::map<std::wstring, StoredValue> DefaultNumbers() {
    return {{L"BindKeyLeft", StoredNumber(1)},       {L"BindKeyRight", StoredNumber(2)},
            {L"BindKeyCenter", StoredNumber(9)},     {L"BindKeyMinus", StoredNumber(3)},
            {L"BindKeyPlus", StoredNumber(4)},       {L"BindKeyTiltLeft", StoredNumber(33)},
            {L"BindKeyTiltRight", StoredNumber(34)}, {L"HolizonScroll", StoredNumber(4)},
            {L"BindKeyHSpeed", StoredNumber(5)},     {L"BindKeyHLotate", StoredNumber(5)},
            {L"BindKeyHCount", StoredNumber(2)}};
}

ProfileRecord DefaultProfileOfTheModel() {
    ProfileRecord record = DefaultProfileRecord();
    record.name = L"Default";
    record.vid = 0x0ABC;
    record.pid = 0x00A1;
    return record;
}

TEST_F(LoadMouseSettingsTest, AModelWithoutAFileGetsADefaultProfileOnDisk) {
    settings.profiles.resize(3);
    settings.selectedProfile = 2;
    EXPECT_TRUE(LoadMouseSettings(settings));
    EXPECT_EQ(settings.profileFilePath, Path());
    EXPECT_EQ(settings.profiles, ProfileSet{DefaultProfileOfTheModel()});
    EXPECT_EQ(settings.selectedProfile, 0U);
    EXPECT_EQ(settings.registrySettings, DefaultProfileRecord().settings);
    EXPECT_EQ(FilesInFolder(), std::vector<std::wstring>{kFileName});

    MouseSettings again = settings;
    again.profiles.clear();
    EXPECT_TRUE(LoadMouseSettings(again));
    EXPECT_EQ(again.profiles, settings.profiles);
}

TEST_F(LoadMouseSettingsTest, ANewProfilesNumbersAreWrittenToTheRegistryAndNothingElse) {
    EXPECT_TRUE(LoadMouseSettings(settings));
    EXPECT_EQ(StoredValues(), DefaultNumbers());
}

TEST_F(LoadMouseSettingsTest, ANewProfilesNumbersAreWrittenInTheirOrder) {
    std::vector<std::wstring> names;
    const auto genuine = test::Genuine<decltype(RegSetValueExW)>(L"advapi32", "RegSetValueExW");
    const ReplacedImport<"RegSetValueExW", LSTATUS(HKEY, LPCWSTR, DWORD, DWORD, const BYTE*, DWORD)> set(
        GetModuleHandleW(nullptr), [&](HKEY key, LPCWSTR name, DWORD zero, DWORD type, const BYTE* data, DWORD bytes) {
            names.emplace_back(name);
            return genuine(key, name, zero, type, data, bytes);
        });
    EXPECT_TRUE(LoadMouseSettings(settings));
    EXPECT_EQ(names, test::NamesOf(AllNumbers(settings.Selected().values)));
}

TEST_F(LoadMouseSettingsTest, ANewProfileTakesTheMachineWideFunctionForTheWheelButton) {
    SetMachineWideCenter(36);
    EXPECT_TRUE(LoadMouseSettings(settings));
    EXPECT_EQ(settings.Selected()[SettingField::Center], 36);
    EXPECT_EQ(StoredValues().at(L"BindKeyCenter"), StoredNumber(36));
}

TEST_F(LoadMouseSettingsTest, AMachineWideFunctionOutOfRangeIsReplacedByTheInitialValue) {
    SetMachineWideCenter(99);
    EXPECT_TRUE(LoadMouseSettings(settings));
    EXPECT_EQ(StoredValues().at(L"BindKeyCenter"), StoredNumber(13));
    EXPECT_EQ(settings.registrySettings[SettingField::Center], 13);
}

TEST_F(LoadMouseSettingsTest, ANumberThatCouldNotBeWrittenIsWrittenByTheNextApply) {
    {
        const test::LockedKey locked(HKEY_CURRENT_USER, kModelKey, test::kReadingAllowed);
        EXPECT_TRUE(LoadMouseSettings(settings));
    }
    EXPECT_TRUE(StoredValues().empty());
    EXPECT_TRUE(WriteRegistryValues(settings));
    EXPECT_EQ(StoredValues(), DefaultNumbers());
}

TEST_F(LoadMouseSettingsTest, AnExistingFileIsLoadedAndLeftAloneLikeTheRegistry) {
    const std::string bytes =
        "<data><select_profile>1</select_profile><profile><profname>a</profname></profile>"
        "<profile><profname>b</profname><lbutton>36</lbutton><scrolls>9</scrolls></profile></data>";
    WriteFile(bytes);
    EXPECT_TRUE(LoadMouseSettings(settings));
    ASSERT_EQ(settings.profiles.size(), 2U);
    EXPECT_EQ(settings.profiles[1].name, L"b");
    EXPECT_EQ(settings.selectedProfile, 1U);
    EXPECT_EQ(settings.registrySettings[SettingField::Left], 36);
    EXPECT_EQ(settings.registrySettings[SettingField::HorizontalScrollSpeed], -1);
    EXPECT_EQ(settings.initialValues, kInitialValues);
    EXPECT_FALSE(settings.setFileAsideBeforeSaving);
    EXPECT_TRUE(StoredValues().empty());
    EXPECT_EQ(test::ReadBytes(Path()), bytes);
    EXPECT_EQ(FilesInFolder(), std::vector<std::wstring>{kFileName});
}

TEST_F(LoadMouseSettingsTest, TheAssumedContentsOfTheRegistryAreChecked) {
    SetMachineWideCenter(99);
    WriteFile("<data><profile/></data>");
    EXPECT_TRUE(LoadMouseSettings(settings));
    EXPECT_EQ(settings.Selected()[SettingField::Center], 99);
    EXPECT_EQ(settings.registrySettings[SettingField::Center], -1);
}

TEST_F(LoadMouseSettingsTest, ASelectionOutsideTheListSelectsTheFirst) {
    for (const std::int64_t stored : {std::int64_t{-1}, std::int64_t{2}, std::int64_t{3}, std::int64_t{-2147483648},
                                      std::int64_t{2147483647}, std::int64_t{4294967297}}) {
        WriteFile("<data><select_profile>" + std::to_string(stored) + "</select_profile><profile/><profile/></data>");
        settings.selectedProfile = 7;
        EXPECT_TRUE(LoadMouseSettings(settings));
        EXPECT_EQ(settings.selectedProfile, 0U) << stored;
    }
}

TEST_F(LoadMouseSettingsTest, ABrokenFileIsSetAsideBeforeTheDefaultTakesItsPlace) {
    for (const std::wstring aside : {L"VID0abcPID00a1.broken-1.xml", L"VID0abcPID00a1.broken-2.xml"}) {
        const std::string bytes = "<data><profile>" + std::string(aside.begin(), aside.end());
        WriteFile(bytes);
        EXPECT_TRUE(LoadMouseSettings(settings));
        EXPECT_EQ(settings.profiles, ProfileSet{DefaultProfileOfTheModel()});
        EXPECT_FALSE(settings.setFileAsideBeforeSaving);
        EXPECT_EQ(test::ReadBytes(User().SettingsFolder() + L'\\' + aside), bytes);
    }
    EXPECT_EQ(FilesInFolder(),
              (std::vector<std::wstring>{L"VID0abcPID00a1.broken-1.xml", L"VID0abcPID00a1.broken-2.xml", kFileName}));
}

TEST_F(LoadMouseSettingsTest, AFileWithoutProfilesIsSetAsideToo) {
    WriteFile("<data><vid>1</vid></data>");
    EXPECT_TRUE(LoadMouseSettings(settings));
    EXPECT_EQ(FilesInFolder(), (std::vector<std::wstring>{L"VID0abcPID00a1.broken-1.xml", kFileName}));
}

TEST_F(LoadMouseSettingsTest, AFileInUseIsLeftAloneAndSoIsTheRegistry) {
    const std::string bytes = "<data><profile><profname>mine</profname></profile></data>";
    WriteFile(bytes);
    const ReplacedImport<"Sleep", void(DWORD)> sleep(GetModuleHandleW(nullptr), [](DWORD) {});
    {
        const platform::UniqueFile held = kvn::test::HoldFile(Path(), 0);
        EXPECT_FALSE(LoadMouseSettings(settings));
        EXPECT_EQ(settings.profiles.size(), 1U);
        EXPECT_TRUE(settings.setFileAsideBeforeSaving);
        EXPECT_FALSE(SaveProfiles(settings));
    }
    EXPECT_TRUE(StoredValues().empty());
    // Later the file can be read and has the user's profiles, which the default must not replace.
    EXPECT_FALSE(SaveProfiles(settings));
    EXPECT_EQ(test::ReadBytes(Path()), bytes);
    EXPECT_EQ(FilesInFolder(), std::vector<std::wstring>{kFileName});
}

// Loads while each call of a Windows function in turn runs out of memory. The page still opens, and the test then saves
// what a user has done on it.
class LoadWithoutMemoryTest : public SettingsStore {
protected:
    void ExpectKept(const std::string& bytes, const std::wstring& name) {
        int failing = 0;
        for (bool isEnough = false; !isEnough;) {
            MouseSettings opened = settings;
            test::WriteBytes(User().SettingsFolder() + L'\\' + name, bytes);
            isEnough = LoadsWithFailureAt(++failing, opened);
            if (isEnough) break;
            opened.profiles.assign(1, DefaultProfileRecord());
            static_cast<void>(SaveProfiles(opened));
            EXPECT_TRUE(IsKept(bytes)) << failing;
            for (const std::wstring& file : FilesInFolder())
                DeleteFileW((User().SettingsFolder() + L'\\' + file).c_str());
        }
        EXPECT_GT(failing, 2);
    }

private:
    template <kvn::test::FunctionName kName, typename Result, typename... Arguments>
    static ReplacedImport<kName, Result(Arguments...)> Failing(int& left, Result (*genuine)(Arguments...)) {
        return {GetModuleHandleW(nullptr), [&left, genuine](Arguments... arguments) -> Result {
                    if (--left == 0) throw std::bad_alloc();
                    return genuine(arguments...);
                }};
    }

    // False if the memory ran out.
    static bool LoadsWithFailureAt(int number, MouseSettings& opened) {
        int left = number;
        const auto read = Failing<"ReadFile">(left, &ReadFile);
        const auto look = Failing<"GetFileAttributesW">(left, &GetFileAttributesW);
        const auto key = Failing<"RegOpenKeyExW">(left, &RegOpenKeyExW);
        try {
            static_cast<void>(LoadMouseSettings(opened));
        } catch (const std::bad_alloc&) {
            return false;
        }
        return true;
    }

    bool IsKept(const std::string& bytes) const {
        const auto files = FilesInFolder();
        return std::any_of(files.begin(), files.end(), [&](const std::wstring& file) {
            return test::ReadBytes(User().SettingsFolder() + L'\\' + file) == bytes;
        });
    }
};

TEST_F(LoadWithoutMemoryTest, AGoodFileIsNotReplacedLater) {
    WriteFile("");
    ExpectKept("<data><profile><profname>mine</profname></profile></data>", kFileName);
}

TEST_F(LoadWithoutMemoryTest, ABrokenFileIsSetAsideLater) {
    WriteFile("");
    ExpectKept("<data><profile><profname>mine</profname>", kFileName);
}

TEST_F(LoadWithoutMemoryTest, ASaveThatWasCutOffIsFinishedLater) {
    WriteFile("");
    DeleteFileW(Path().c_str());
    ExpectKept("<data><profile><profname>mine</profname></profile></data>", std::wstring(kFileName) + L".saving");
}

TEST_F(LoadMouseSettingsTest, LeftoversOfAnInterruptedSaveAreRemoved) {
    const std::string bytes = "<data><profile><profname>mine</profname></profile></data>";
    WriteFile(bytes);
    test::WriteBytes(Path() + L".saving", "<data><profile>");
    EXPECT_TRUE(LoadMouseSettings(settings));
    EXPECT_EQ(settings.profiles[0].name, L"mine");
    EXPECT_EQ(test::ReadBytes(Path()), bytes);
    EXPECT_EQ(FilesInFolder(), std::vector<std::wstring>{kFileName});
}

TEST_F(LoadMouseSettingsTest, ASaveThatLacksOnlyItsRenamingIsLoadedWhenTheFileIsGone) {
    const std::string bytes = "<data><profile><profname>mine</profname></profile></data>";
    WriteFile(bytes);
    ASSERT_TRUE(MoveFileW(Path().c_str(), (Path() + L".saving").c_str()));
    EXPECT_TRUE(LoadMouseSettings(settings));
    EXPECT_EQ(settings.profiles[0].name, L"mine");
    EXPECT_EQ(test::ReadBytes(Path()), bytes);
    EXPECT_TRUE(StoredValues().empty());
    EXPECT_EQ(FilesInFolder(), std::vector<std::wstring>{kFileName});
}

TEST_F(LoadMouseSettingsTest, HalfASaveWithoutTheFileIsReplacedByADefaultProfile) {
    WriteFile("<data><profile><profname>mine</profname></profile>");
    ASSERT_TRUE(MoveFileW(Path().c_str(), (Path() + L".saving").c_str()));
    EXPECT_TRUE(LoadMouseSettings(settings));
    EXPECT_EQ(settings.profiles, ProfileSet{DefaultProfileOfTheModel()});
    EXPECT_EQ(FilesInFolder(), std::vector<std::wstring>{kFileName});
}

TEST_F(LoadMouseSettingsTest, ASaveThatIsUnderWayIsLeftAlone) {
    WriteFile("<data><profile/></data>");
    test::WriteBytes(Path() + L".saving", "<data><profile>");
    {
        const platform::UniqueFile saving = kvn::test::HoldFile(Path() + L".saving", 0);
        EXPECT_TRUE(LoadMouseSettings(settings));
    }
    EXPECT_EQ(test::ReadBytes(Path() + L".saving"), "<data><profile>");
}

TEST_F(LoadMouseSettingsTest, WithoutAFolderThereIsADefaultProfileAllTheSame) {
    test::WriteBytes(User().ApplicationData() + L"\\KORVEN", "a file where the folder should be");
    EXPECT_FALSE(LoadMouseSettings(settings));
    EXPECT_EQ(settings.profiles, ProfileSet{DefaultProfileOfTheModel()});
    EXPECT_EQ(StoredValues(), DefaultNumbers());
}

TEST_F(LoadMouseSettingsTest, WithoutApplicationDataTheFolderIsItsOwnPartOnly) {
    const ReplacedImport<"SHGetSpecialFolderLocation", HRESULT(HWND, int, ITEMIDLIST**)> noFolder(
        GetModuleHandleW(nullptr), [](HWND, int, ITEMIDLIST**) { return E_FAIL; });
    const ReplacedImport<"SHCreateDirectory", int(HWND, PCWSTR)> noCreation(
        GetModuleHandleW(nullptr), [](HWND, PCWSTR folder) {
            EXPECT_EQ(folder, std::wstring(L"\\KORVEN\\Tarsel3\\"));
            return ERROR_ACCESS_DENIED;
        });
    ASSERT_TRUE(noFolder.IsInPlace());
    ASSERT_TRUE(noCreation.IsInPlace());
    EXPECT_FALSE(LoadMouseSettings(settings));
    EXPECT_EQ(settings.profileFilePath, L"\\KORVEN\\Tarsel3\\VID0abcPID00a1.xml");
}

TEST_F(LoadMouseSettingsTest, TheFileNameHasTheModelsIds) {
    settings.device.vid = 0x12345;
    settings.device.pid = 0;
    EXPECT_TRUE(LoadMouseSettings(settings));
    EXPECT_EQ(FilesInFolder(), std::vector<std::wstring>{L"VID12345PID0000.xml"});
    ProfileSet list = settings.profiles;
    EXPECT_EQ(list[0].vid, 0x2345);
}

TEST_F(LoadMouseSettingsTest, TakesTheVersionOfWindowsThatTheHostProgramSees) {
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    GetVersionExW(&version);
    EXPECT_TRUE(LoadMouseSettings(settings));
    EXPECT_EQ(settings.os, (OsVersion{version.dwMajorVersion, version.dwMinorVersion}));
}

}  // namespace
}  // namespace kvn::model
