// The changes of an import, and what it leaves alone.
#include <windows.h>

#include <commctrl.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "model/registry_changes.h"
#include "model/xml_guard.h"
#include "platform/unique_resource.h"
#include "resources/resource.h"
#include "tests/model_windows/genuine_function.h"
#include "tests/model_windows/intercepted_rename.h"
#include "tests/model_windows/value_names.h"
#include "tests/service_transfer/transfer_fixture.h"
#include "tests/support/held_file.h"
#include "tests/support/owning_types.h"
#include "tests/support/replaced_import.h"

namespace kvn::service_test {
namespace {

using model::test::Genuine;
using service::kDone;
using service::kFailed;
using service::kOtherModel;

using SetValue = LSTATUS(HKEY, LPCWSTR, DWORD, DWORD, const BYTE*, DWORD);
using DeleteValue = LSTATUS(HKEY, LPCWSTR);

SetValue* GenuineSetValue() {
    return Genuine<SetValue>(L"advapi32", "RegSetValueExW");
}

class SettingsImportTest : public SettingsTransferTest {
protected:
    static std::string NewSettings() {
        return SettingsText(test::ProfileText("First") +
                                test::ProfileText("Work", {{"lbutton", "37"},
                                                           {"lbutton_etcKey", "Left Ctrl+V"},
                                                           {"hcount", "-2"},
                                                           {"Application", "<name>n</name><path>C:\\a.exe</path>"},
                                                           {"Gesture", "<Key>DR</Key><Function>6</Function>"}}),
                            "<vid>2748</vid><pid>161</pid><select_profile>1</select_profile>");
    }
};

TEST_F(SettingsImportTest, TakesAllProfilesAndKeepsTheEarlierFile) {
    HaveEarlierSettings();
    const std::string earlier = test::ReadFileText(ProfileFile());
    const auto answer = Import(WriteFile(NewSettings()));
    EXPECT_EQ(answer.exitCode, kDone) << testing::PrintToString(answer.text);
    const std::wstring kept = Folder() + L'\\' + kModelName + L".before-import-1.xml";
    EXPECT_TRUE(Has(answer, kept)) << testing::PrintToString(answer.text);
    EXPECT_EQ(test::ReadFileText(kept), earlier);
    EXPECT_EQ(Loaded(ProfileFile()), Loaded(File(L"settings.xml")));
    EXPECT_EQ(Loaded(ProfileFile()).front().selectedIndex, 1);
    EXPECT_EQ(model::test::NamesIn(Folder()).size(), 2U);
}

TEST_F(SettingsImportTest, TheKeptFileHasTheFirstFreeNumber) {
    HaveEarlierSettings();
    const std::wstring stem = Folder() + L'\\' + kModelName + L".before-import-";
    test::WriteFileText(stem + L"1.xml", "mine");
    test::WriteFileText(stem + L"3.xml", "mine too");
    EXPECT_TRUE(Has(Import(WriteFile(NewSettings())), stem + L"2.xml"));
    EXPECT_TRUE(Has(Import(WriteFile(NewSettings())), stem + L"4.xml"));
    EXPECT_EQ(test::ReadFileText(stem + L"1.xml"), "mine");
    EXPECT_EQ(test::ReadFileText(stem + L"3.xml"), "mine too");
}

TEST_F(SettingsImportTest, WorksWithoutEarlierSettings) {
    EXPECT_EQ(Import(WriteFile(NewSettings())).exitCode, kDone);
    EXPECT_EQ(model::test::NamesIn(Folder()), std::vector<std::wstring>{std::wstring(kModelName) + L".xml"});
    EXPECT_EQ(test::StoredValues(ModelKey()).size(), 20U);
}

TEST_F(SettingsImportTest, KeepsABrokenProfileFileToo) {
    WriteProfileFile("<data><profile>");
    EXPECT_EQ(Import(WriteFile(NewSettings())).exitCode, kDone);
    EXPECT_EQ(test::ReadFileText(Folder() + L'\\' + kModelName + L".before-import-1.xml"), "<data><profile>");
}

TEST_F(SettingsImportTest, WritesTheSelectedProfileToTheRegistryInTheOrderOfAnApply) {
    HaveEarlierSettings();
    std::vector<std::wstring> written;
    const test::ReplacedImport<"RegSetValueExW", SetValue> recorded(
        GetModuleHandleW(nullptr),
        [&](HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
            written.emplace_back(name);
            return GenuineSetValue()(key, name, reserved, type, data, size);
        });
    ASSERT_TRUE(recorded.IsInPlace());
    ASSERT_EQ(Import(WriteFile(NewSettings())).exitCode, kDone);
    EXPECT_EQ(written, model::test::NamesOf(model::AllValues(Loaded(ProfileFile()).back().settings)));
    auto values = test::StoredValues(ModelKey());
    EXPECT_EQ(values[L"BindKeyLeft"], test::StoredNumber(37));
    EXPECT_EQ(values[L"BindKeyRight"], test::StoredNumber(2));
    EXPECT_EQ(values[L"BindKeyHCount"], test::StoredNumber(-2));
    EXPECT_EQ(values[L"BindKeyLeft_etcKey"], test::StoredText(L"Left Ctrl+V"));
    EXPECT_EQ(values[L"Gesture"], test::StoredList(std::wstring(L"DR\t6\t\t\0\0", 8)));
    EXPECT_EQ(values[L"ProfileApp"], test::StoredList(std::wstring(L"n\tC:\\a.exe\0\0", 12)));
    EXPECT_TRUE(values.contains(L"SomethingElse"));
}

TEST_F(SettingsImportTest, NothingChangesWhenTheFileIsBad) {
    HaveEarlierSettings();
    CreateDirectoryW(File(L"folder").c_str(), nullptr);
    const Stored before = WhatIsStored();
    struct Row {
        std::string text;
        const wchar_t* said;
    };
    const Row rows[]{
        {SettingsText(test::ProfileText("Work", {{"tiltleft", "55"}})), L"tiltleft of profile 'Work' is out of range"},
        {SettingsText(test::ProfileText("Work", {{"Gesture", "<Key>U</Key><Function>77</Function>"}})),
         L"Gesture[1]/Function of profile 'Work' is out of range: '77'"},
        {SettingsText(test::ProfileText("A") + test::ProfileText("A")), L"Two profiles are called 'A'"},
        {SettingsText("<profile></profile>"), L"profname of profile '1' is missing"},
        {SettingsText(test::ProfileText(std::string(2000, 'x'))), L"too long"},
        {SettingsText(test::ProfileText("A"), "<vid>70000</vid><pid>1</pid>"), L"vid is out of range: '70000'"},
        {"<html></html>", L"no mouse settings"},
        {SettingsText(test::ProfileText("A")).substr(0, 60), L"damaged"},
        {"", L"damaged"},
        {std::string("MZ\0\x90", 4), L"damaged"},
    };
    for (const Row& row : rows) {
        const auto answer = Import(WriteFile(row.text));
        EXPECT_EQ(answer.exitCode, kFailed) << row.text;
        EXPECT_TRUE(Has(answer, row.said)) << testing::PrintToString(answer.text);
        EXPECT_EQ(WhatIsStored(), before) << row.text;
    }
}

TEST_F(SettingsImportTest, NamesTheProblemWithThePath) {
    HaveEarlierSettings();
    CreateDirectoryW(File(L"folder").c_str(), nullptr);
    const Stored before = WhatIsStored();
    {
        const platform::UniqueFile huge(CreateFileW(File(L"huge.xml").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                                    FILE_ATTRIBUTE_NORMAL, nullptr));
        SetFilePointer(huge.Get(), static_cast<LONG>(model::kMaxXmlBytes) + 1, nullptr, FILE_BEGIN);
        SetEndOfFile(huge.Get());
    }
    WriteFile(NewSettings(), L"held.xml");
    const platform::UniqueFile held = test::HoldFile(File(L"held.xml"), 0);
    struct Row {
        const wchar_t* name;
        const wchar_t* said;
    };
    for (const Row& row : {Row{L"folder", L"is a folder"}, Row{L"none.xml", L"no such file"},
                           Row{L"none\\settings.xml", L"no such file"}, Row{L"huge.xml", L"too large"},
                           Row{L"held.xml", L"cannot be read"}}) {
        const auto answer = Import(File(row.name));
        EXPECT_EQ(answer.exitCode, kFailed);
        EXPECT_TRUE(Has(answer, row.said)) << testing::PrintToString(answer.text);
        EXPECT_TRUE(Has(answer, File(row.name))) << testing::PrintToString(answer.text);
    }
    EXPECT_EQ(WhatIsStored(), before);
}

TEST_F(SettingsImportTest, NeedsAMouse) {
    test::RemovePublished(L"PID");
    const auto answer = Import(WriteFile(NewSettings()));
    EXPECT_EQ(answer.exitCode, kFailed);
    EXPECT_TRUE(Has(answer, L"No mouse")) << testing::PrintToString(answer.text);
}

TEST_F(SettingsImportTest, AFileOfAnotherModelIsAskedAbout) {
    HaveEarlierSettings();
    const Stored before = WhatIsStored();
    const std::wstring file = WriteFile(SettingsText(test::ProfileText("A"), "<vid>4660</vid><pid>22136</pid>"));
    int questions = 0;
    bool isWanted = false;
    const auto ask = [&](const std::wstring& ofFile, const std::wstring& attached) {
        ++questions;
        EXPECT_EQ(ofFile, L"1234:5678");
        EXPECT_EQ(attached, L"0abc:00a1");
        return isWanted;
    };
    const auto refused = service::ImportSettings(file, ask);
    EXPECT_EQ(refused.exitCode, kOtherModel);
    EXPECT_TRUE(Has(refused, L"1234:5678") && Has(refused, L"--yes")) << testing::PrintToString(refused.text);
    EXPECT_EQ(WhatIsStored(), before);

    isWanted = true;
    EXPECT_EQ(service::ImportSettings(file, ask).exitCode, kDone);
    EXPECT_EQ(questions, 2);
    EXPECT_EQ(Loaded(ProfileFile()).front().name, L"A");
    EXPECT_EQ(Loaded(ProfileFile()).front().vid, 0x0ABC);
    EXPECT_EQ(Loaded(ProfileFile()).front().pid, 0x00A1);
}

struct ControlRow {
    int id;
    const wchar_t* className;
};
using ControlsOfPage = std::array<ControlRow, 3>;

constexpr ControlsOfPage kControlsOfPage{
    {{IDC_PAGE_TAB, WC_TABCONTROLW}, {IDC_PAGE_EDIT_PROFILE, WC_BUTTONW}, {IDC_PAGE_PROFILE, WC_COMBOBOXW}}};

// A window with the controls by which the page is recognised.
class ShownPage {
public:
    explicit ShownPage(const ControlsOfPage& controls = kControlsOfPage)
        : window(CreateWindowExW(0, WC_STATICW, nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr)) {
        InitCommonControls();
        for (const ControlRow& row : controls) {
            CreateWindowExW(0, row.className, nullptr, WS_CHILD, 0, 0, 0, 0, window.Get(),
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(row.id)), nullptr, nullptr);
        }
    }

private:
    test::UniqueWindow window;
};

TEST_F(SettingsImportTest, IsRefusedWhileAPageIsOpen) {
    HaveEarlierSettings();
    const Stored before = WhatIsStored();
    const std::wstring file = WriteFile(NewSettings());
    {
        const ShownPage page;
        const auto answer = Import(file);
        EXPECT_EQ(answer.exitCode, kFailed);
        EXPECT_TRUE(Has(answer, L"Mouse control panel")) << testing::PrintToString(answer.text);
        EXPECT_EQ(WhatIsStored(), before);
    }
    EXPECT_EQ(Import(file).exitCode, kDone);
}

TEST_F(SettingsImportTest, AnotherProgramsDialogWithThePagesNumbersIsNoPage) {
    HaveEarlierSettings();
    ControlsOfPage controls = kControlsOfPage;
    controls.front().className = WC_LISTVIEWW;
    const ShownPage dialog(controls);
    EXPECT_EQ(Import(WriteFile(NewSettings())).exitCode, kDone);
}

TEST_F(SettingsImportTest, NothingChangesWhenTheProfileFileCannotBeReplaced) {
    HaveEarlierSettings();
    const Stored before = WhatIsStored();
    const std::wstring file = WriteFile(NewSettings());
    const auto expectRefusal = [&] {
        const auto answer = Import(file);
        EXPECT_EQ(answer.exitCode, kFailed);
        EXPECT_TRUE(Has(answer, L"Nothing has changed")) << testing::PrintToString(answer.text);
    };
    SetFileAttributesW(ProfileFile().c_str(), FILE_ATTRIBUTE_READONLY);
    expectRefusal();
    SetFileAttributesW(ProfileFile().c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(WhatIsStored(), before);
    {
        const platform::UniqueFile held = test::HoldFile(ProfileFile(), FILE_SHARE_READ);
        expectRefusal();
    }
    EXPECT_EQ(WhatIsStored(), before);
    {
        const model::test::InterceptedRename full([](HANDLE, const std::wstring&) {
            SetLastError(ERROR_DISK_FULL);
            return FALSE;
        });
        ASSERT_TRUE(full.IsInPlace());
        expectRefusal();
    }
    EXPECT_EQ(WhatIsStored(), before);
}

// One write fails, so that those that restore everything succeed; or all from this one on.
class FailingRegistry {
public:
    explicit FailingRegistry(int failingWrite, bool failsFromThenOn = false)
        : writes(GetModuleHandleW(nullptr),
                 [this, failingWrite, failsFromThenOn](HKEY key, LPCWSTR name, DWORD reserved, DWORD type,
                                                       const BYTE* data, DWORD size) -> LSTATUS {
                     ++count;
                     const bool fails = failsFromThenOn ? count >= failingWrite : count == failingWrite;
                     if (fails) return ERROR_ACCESS_DENIED;
                     return GenuineSetValue()(key, name, reserved, type, data, size);
                 }) {}

private:
    int count = 0;
    test::ReplacedImport<"RegSetValueExW", SetValue> writes;
};

TEST_F(SettingsImportTest, NothingChangesWhenAWriteToTheRegistryFails) {
    HaveEarlierSettings();
    const Stored before = WhatIsStored();
    const std::wstring file = WriteFile(NewSettings());
    for (int failing = 1; failing <= 20; ++failing) {
        const FailingRegistry registry(failing);
        const auto answer = Import(file);
        EXPECT_EQ(answer.exitCode, kFailed) << failing;
        EXPECT_TRUE(Has(answer, L"Nothing has changed")) << testing::PrintToString(answer.text);
        ASSERT_EQ(WhatIsStored(), before) << failing;
    }
}

TEST_F(SettingsImportTest, NamesTheFileWithTheEarlierProfilesWhenTheRegistryCannotBeRestored) {
    HaveEarlierSettings();
    const std::string earlier = model::test::ReadBytes(ProfileFile());
    const std::wstring file = WriteFile(NewSettings());
    const FailingRegistry registry(1, true);
    const auto answer = Import(file);
    EXPECT_EQ(answer.exitCode, kFailed);
    EXPECT_TRUE(Has(answer, L"The earlier profiles are kept. File: " + ProfileFile()))
        << testing::PrintToString(answer.text);
    EXPECT_EQ(model::test::ReadBytes(ProfileFile()), earlier);
}

TEST_F(SettingsImportTest, NothingIsLeftWhenTheFirstImportFails) {
    const std::wstring file = WriteFile(NewSettings());
    for (const int failing : {1, 20}) {
        const FailingRegistry registry(failing);
        EXPECT_EQ(Import(file).exitCode, kFailed);
        EXPECT_TRUE(model::test::NamesIn(Folder()).empty());
        EXPECT_FALSE(HasModelKey());
    }
}

TEST_F(SettingsImportTest, NothingChangesWhenAnOldValueCannotBeRemoved) {
    HaveEarlierSettings();
    const Stored before = WhatIsStored();
    const std::wstring file = WriteFile(NewSettings());
    {
        int count = 0;
        const test::ReplacedImport<"RegDeleteValueW", DeleteValue> refused(
            GetModuleHandleW(nullptr), [&](HKEY key, LPCWSTR name) -> LSTATUS {
                if (++count == 2) return ERROR_ACCESS_DENIED;
                return Genuine<DeleteValue>(L"advapi32", "RegDeleteValueW")(key, name);
            });
        ASSERT_TRUE(refused.IsInPlace());
        EXPECT_EQ(Import(file).exitCode, kFailed);
    }
    EXPECT_EQ(WhatIsStored(), before);
}

TEST_F(SettingsImportTest, ImportsTheKeptFileAgain) {
    HaveEarlierSettings();
    const model::ProfileSet earlier = Loaded(ProfileFile());
    ASSERT_EQ(Import(WriteFile(NewSettings())).exitCode, kDone);
    ASSERT_EQ(Import(Folder() + L'\\' + kModelName + L".before-import-1.xml").exitCode, kDone);
    EXPECT_EQ(Loaded(ProfileFile()), earlier);
}

}  // namespace
}  // namespace kvn::service_test
