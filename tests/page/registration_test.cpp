#include <gtest/gtest.h>

#include <windows.h>

#include <olectl.h>

#include <optional>
#include <string>

#include "platform/unique_resource.h"
#include "tests/support/module_under_test.h"
#include "tests/support/replaced_import.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::test {
namespace {

constexpr wchar_t kHandlers[] =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Controls Folder\\Display\\shellex\\PropertySheetHandlers";
constexpr wchar_t kHandler[] =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Controls Folder\\Display\\shellex\\PropertySheetHandlers\\"
    L"Control Panel Extention Sample";
constexpr wchar_t kClass[] = L"CLSID\\{3BF82320-3F22-11d0-90FD-0040C757956E}";
constexpr wchar_t kServer[] = L"CLSID\\{3BF82320-3F22-11d0-90FD-0040C757956E}\\InProcServer32";

class RegistrationTest : public testing::Test {
protected:
    static std::optional<std::wstring> TextAt(HKEY root, const wchar_t* key, const wchar_t* value) {
        wchar_t text[256]{};
        DWORD size = sizeof text;
        DWORD type = REG_NONE;
        if (RegGetValueW(root, key, value, RRF_RT_ANY, &type, text, &size) != ERROR_SUCCESS) return std::nullopt;
        EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
        return text;
    }
    static bool HasKey(HKEY root, const wchar_t* key) {
        platform::UniqueRegistryKey opened;
        return RegOpenKeyExW(root, key, 0, KEY_READ, opened.Receive()) == ERROR_SUCCESS;
    }

    ModuleUnderTest module;
    SandboxedHive machine{HKEY_LOCAL_MACHINE};
    SandboxedHive classes{HKEY_CLASSES_ROOT};
};

TEST_F(RegistrationTest, WritesTheGenericEntry) {
    EXPECT_EQ(module.RegisterServer(), S_OK);
    EXPECT_EQ(TextAt(HKEY_LOCAL_MACHINE, kHandler, nullptr), L"{3BF82320-3F22-11d0-90FD-0040C757956E}");
    EXPECT_EQ(TextAt(HKEY_CLASSES_ROOT, kServer, nullptr), L"PANEL.CPL");
    EXPECT_EQ(TextAt(HKEY_CLASSES_ROOT, kServer, L"ThreadingModel"), L"Apartment");
}

TEST_F(RegistrationTest, NamesNeitherTheServedClassNorTheMouse) {
    EXPECT_EQ(module.RegisterServer(), S_OK);
    EXPECT_FALSE(HasKey(HKEY_CLASSES_ROOT, L"CLSID\\{B7C1D9A4-3E52-4F0B-9C86-2D7A51E8F043}"));
    EXPECT_FALSE(HasKey(HKEY_LOCAL_MACHINE, L"Software\\Microsoft\\Windows\\CurrentVersion\\Controls Folder\\Mouse"));
}

TEST_F(RegistrationTest, CanBeRepeated) {
    EXPECT_EQ(module.RegisterServer(), S_OK);
    EXPECT_EQ(module.RegisterServer(), S_OK);
}

TEST_F(RegistrationTest, RemovesWhatItWroteAndNothingElse) {
    ASSERT_EQ(module.RegisterServer(), S_OK);
    EXPECT_EQ(module.UnregisterServer(), S_OK);
    EXPECT_FALSE(HasKey(HKEY_LOCAL_MACHINE, kHandler));
    EXPECT_FALSE(HasKey(HKEY_CLASSES_ROOT, kServer));
    EXPECT_FALSE(HasKey(HKEY_CLASSES_ROOT, kClass));
    EXPECT_TRUE(HasKey(HKEY_LOCAL_MACHINE, kHandlers));
    EXPECT_TRUE(HasKey(HKEY_CLASSES_ROOT, L"CLSID"));
}

TEST_F(RegistrationTest, RemovingWhatIsNotThereSucceeds) {
    EXPECT_EQ(module.UnregisterServer(), S_OK);
}

TEST_F(RegistrationTest, FailedWriteIsAClassError) {
    for (const wchar_t* failing : {L"", L"ThreadingModel"}) {
        const ReplacedImport<"RegSetValueExW", decltype(RegSetValueExW)> set(
            module.Handle(), [=](HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
                if (std::wstring(name == nullptr ? L"" : name) == failing) return LSTATUS{ERROR_ACCESS_DENIED};
                return RegSetValueExW(key, name, reserved, type, data, size);
            });
        EXPECT_EQ(module.RegisterServer(), SELFREG_E_CLASS);
    }
}

TEST_F(RegistrationTest, FailedKeyIsAClassError) {
    const ReplacedImport<"RegCreateKeyExW", decltype(RegCreateKeyExW)> create(
        module.Handle(), [](HKEY, LPCWSTR, DWORD, LPWSTR, DWORD, REGSAM, LPSECURITY_ATTRIBUTES, PHKEY, LPDWORD) {
            return LSTATUS{ERROR_ACCESS_DENIED};
        });
    EXPECT_EQ(module.RegisterServer(), SELFREG_E_CLASS);
}

TEST_F(RegistrationTest, RemovingNeverFails) {
    ASSERT_EQ(module.RegisterServer(), S_OK);
    const ReplacedImport<"RegDeleteKeyW", decltype(RegDeleteKeyW)> remove(
        module.Handle(), [](HKEY, LPCWSTR) { return LSTATUS{ERROR_ACCESS_DENIED}; });
    EXPECT_EQ(module.UnregisterServer(), S_OK);
}

TEST_F(RegistrationTest, LeavesAClassKeyInWhichOthersKeepSomething) {
    ASSERT_EQ(module.RegisterServer(), S_OK);
    RegSetKeyValueW(HKEY_CLASSES_ROOT, kClass, L"Theirs", REG_SZ, L"x", 4);
    EXPECT_EQ(module.UnregisterServer(), S_OK);
    EXPECT_TRUE(HasKey(HKEY_CLASSES_ROOT, kClass));
    EXPECT_FALSE(HasKey(HKEY_CLASSES_ROOT, kServer));
}

}  // namespace
}  // namespace kvn::test
