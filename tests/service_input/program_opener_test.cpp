#include "service/input/program_opener.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "platform/unique_resource.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::test {
namespace {

using service::OpenProgram;
using service::Program;

constexpr wchar_t kUserChoice[] =
    L"Software\\Microsoft\\Windows\\Shell\\Associations\\UrlAssociations\\http\\UserChoice";

void WriteText(HKEY root, const std::wstring& path, const wchar_t* value, const std::wstring& text) {
    platform::UniqueRegistryKey key;
    ASSERT_EQ(RegCreateKeyW(root, path.c_str(), key.Receive()), ERROR_SUCCESS);
    const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    RegSetValueExW(key.Get(), value, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes);
}

// Programs of Windows that end at once stand for browsers.
void RegisterBrowser(const std::wstring& name, const wchar_t* program) {
    wchar_t folder[MAX_PATH];
    GetSystemDirectoryW(folder, MAX_PATH);
    const std::wstring command = std::wstring(L"\"") + folder + L"\\" + program + L"\" \"%1\"";
    WriteText(HKEY_CLASSES_ROOT, name + L"\\shell\\open\\command", nullptr, command);
}

class ProgramOpenerTest : public testing::Test {
protected:
    SandboxedHive user{HKEY_CURRENT_USER};
    SandboxedHive classes{HKEY_CLASSES_ROOT};
};

TEST_F(ProgramOpenerTest, NoProgramOpensNothing) {
    EXPECT_EQ(OpenProgram(Program::None), L"nothing");
}

TEST_F(ProgramOpenerTest, WithoutABrowserNothingIsOpened) {
    EXPECT_EQ(OpenProgram(Program::Browser), L"no program to open");
}

TEST_F(ProgramOpenerTest, TheBrowserIsTheProgramForWebAddresses) {
    RegisterBrowser(L"http", L"hostname.exe");
    EXPECT_EQ(OpenProgram(Program::Browser), L"opened hostname.exe");
}

TEST_F(ProgramOpenerTest, TheBrowserThatTheUserHasChosenComesFirst) {
    RegisterBrowser(L"http", L"hostname.exe");
    RegisterBrowser(L"KvnTestBrowser", L"whoami.exe");
    WriteText(HKEY_CURRENT_USER, kUserChoice, L"ProgId", L"KvnTestBrowser");
    EXPECT_EQ(OpenProgram(Program::Browser), L"opened whoami.exe");
}

}  // namespace
}  // namespace kvn::test
