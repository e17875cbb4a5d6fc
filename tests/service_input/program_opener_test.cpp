#include "service/input/program_opener.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <shellapi.h>

#include <string>

#include "platform/unique_resource.h"
#include "tests/support/replaced_import.h"
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

void RegisterBrowser(const std::wstring& name, const std::wstring& program) {
    WriteText(HKEY_CLASSES_ROOT, name + L"\\shell\\open\\command", nullptr, L"\"" + program + L"\" \"%1\"");
}

// Records what Windows is asked to open, and opens nothing.
class ProgramOpenerTest : public testing::Test {
protected:
    ProgramOpenerTest() {
        wchar_t folder[MAX_PATH];
        GetSystemDirectoryW(folder, MAX_PATH);
        systemFolder = folder;
        GetWindowsDirectoryW(folder, MAX_PATH);
        windowsFolder = folder;
        EXPECT_TRUE(shell.IsInPlace());
    }

    BOOL Note(const SHELLEXECUTEINFOW& execution) {
        file = execution.lpFile;
        arguments = execution.lpParameters == nullptr ? L"" : execution.lpParameters;
        options = execution.fMask;
        return isRefused ? FALSE : TRUE;
    }

    std::wstring systemFolder;
    std::wstring windowsFolder;
    std::wstring file;
    std::wstring arguments;
    ULONG options = 0;
    bool isRefused = false;

private:
    SandboxedHive user{HKEY_CURRENT_USER};
    SandboxedHive classes{HKEY_CLASSES_ROOT};
    ReplacedImport<"ShellExecuteExW", BOOL(SHELLEXECUTEINFOW*)> shell{
        GetModuleHandleW(nullptr), [this](SHELLEXECUTEINFOW* execution) { return Note(*execution); }};
};

TEST_F(ProgramOpenerTest, NoProgramOpensNothing) {
    EXPECT_EQ(OpenProgram(Program::None), L"nothing");
    EXPECT_EQ(file, L"");
}

TEST_F(ProgramOpenerTest, ExplorerShowsTheComputerAndThePrinters) {
    EXPECT_EQ(OpenProgram(Program::Computer), L"opened explorer.exe shell:MyComputerFolder");
    EXPECT_EQ(file, windowsFolder + L"\\explorer.exe");
    EXPECT_EQ(arguments, L"shell:MyComputerFolder");
    EXPECT_EQ(OpenProgram(Program::Printers), L"opened explorer.exe shell:PrintersFolder");
    EXPECT_EQ(arguments, L"shell:PrintersFolder");
    EXPECT_EQ(OpenProgram(Program::Explorer), L"opened explorer.exe");
    EXPECT_EQ(arguments, L"");
}

TEST_F(ProgramOpenerTest, AProgramOfWindowsIsOpenedByItsFullPath) {
    EXPECT_EQ(OpenProgram(Program::ControlPanel), L"opened control.exe");
    EXPECT_EQ(file, systemFolder + L"\\control.exe");
}

TEST_F(ProgramOpenerTest, AProgramThatIsNotInItsUsualPlaceIsOpenedByItsName) {
    OpenProgram(Program::Magnifier);
    const std::wstring path = systemFolder + L"\\magnify.exe";
    const bool isThere = GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
    EXPECT_EQ(file, isThere ? path : L"magnify.exe");
}

TEST_F(ProgramOpenerTest, WithoutABrowserNothingIsOpened) {
    EXPECT_EQ(OpenProgram(Program::Browser), L"no program to open");
    EXPECT_EQ(file, L"");
}

TEST_F(ProgramOpenerTest, TheBrowserIsTheProgramForWebAddresses) {
    RegisterBrowser(L"http", systemFolder + L"\\hostname.exe");
    EXPECT_EQ(OpenProgram(Program::Browser), L"opened hostname.exe");
    EXPECT_EQ(file, systemFolder + L"\\hostname.exe");
    EXPECT_EQ(arguments, L"");
}

TEST_F(ProgramOpenerTest, TheBrowserThatTheUserHasChosenComesFirst) {
    RegisterBrowser(L"http", systemFolder + L"\\hostname.exe");
    RegisterBrowser(L"KvnTestBrowser", systemFolder + L"\\whoami.exe");
    WriteText(HKEY_CURRENT_USER, kUserChoice, L"ProgId", L"KvnTestBrowser");
    EXPECT_EQ(OpenProgram(Program::Browser), L"opened whoami.exe");
}

TEST_F(ProgramOpenerTest, AProgramThatCannotBeOpenedShowsNoMessage) {
    isRefused = true;
    EXPECT_EQ(OpenProgram(Program::Explorer), L"could not open explorer.exe");
    EXPECT_NE(options & SEE_MASK_FLAG_NO_UI, 0U);
}

}  // namespace
}  // namespace kvn::test
