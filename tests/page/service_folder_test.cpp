// The page looks for help page and pictures beside the service's program.
#include <windows.h>

#include <commctrl.h>
#include <psapi.h>
#include <shellapi.h>

#include "tests/support/page_fixture.h"

namespace kvn::test {
namespace {

struct OpenedDocument {
    HWND owner;
    std::wstring verb;
    std::wstring file;
    bool hasParameters;
    bool hasFolder;
    int show;
};

class ServiceFolderTest : public PageTest {
protected:
    // The reported path of the service's program.
    std::wstring program = L"C:\\Program Files\\Korven\\KvnMouseApl.exe";
    INT_PTR answer = 33;
    std::vector<OpenedDocument> opened;

    ReplacedImport<"GetModuleFileNameExW", decltype(GetModuleFileNameExW)> fileName{
        module.Handle(), [this](HANDLE, HMODULE, LPWSTR buffer, DWORD size) {
            lstrcpynW(buffer, program.c_str(), static_cast<int>(size));
            return static_cast<DWORD>(program.size());
        }};
    ReplacedImport<"ShellExecuteW", decltype(ShellExecuteW)> execute{
        module.Handle(), [this](HWND owner, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters, LPCWSTR folder, INT show) {
            opened.push_back({owner, verb, file, parameters != nullptr, folder != nullptr, show});
            return reinterpret_cast<HINSTANCE>(answer);
        }};

    std::vector<std::wstring> HelpFilesOf(const std::wstring& path) {
        program = path;
        opened.clear();
        Open();
        Click(IDC_PANE_HELP);
        EXPECT_TRUE(sheet->IsQuiet());
        Close();
        std::vector<std::wstring> files;
        for (const OpenedDocument& document : opened) files.push_back(document.file);
        return files;
    }
};

TEST_F(ServiceFolderTest, HelpOpensThePageBesideTheService) {
    Open();
    Click(IDC_PANE_HELP);
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_EQ(opened[0].owner, nullptr);
    EXPECT_EQ(opened[0].verb, L"open");
    EXPECT_EQ(opened[0].file, L"C:\\Program Files\\Korven\\KvnUtilHelp.htm");
    EXPECT_FALSE(opened[0].hasParameters);
    EXPECT_FALSE(opened[0].hasFolder);
    EXPECT_EQ(opened[0].show, SW_SHOWNORMAL);
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_FALSE(sheet->IsApplyEnabled());
}

TEST_F(ServiceFolderTest, HelpThatCannotBeOpenedIsReportedOnce) {
    for (const INT_PTR error : {INT_PTR{0}, INT_PTR{2}, INT_PTR{31}, INT_PTR{32}}) {
        answer = error;
        Open();
        Click(IDC_PANE_HELP);
        ExpectWarning(AnswerMessageBox("about the help file", IDOK), L"The help file could not be opened.");
        EXPECT_TRUE(sheet->IsQuiet());
        EXPECT_FALSE(sheet->IsApplyEnabled());
        Close();
    }
    EXPECT_EQ(opened.size(), 4U);
}

TEST_F(ServiceFolderTest, IsThePathUpToTheFirstNameOfTheService) {
    using Files = std::vector<std::wstring>;
    EXPECT_EQ(HelpFilesOf(L"C:\\KvnMouseApl\\bin\\KvnMouseApl.exe"), (Files{L"C:\\KvnUtilHelp.htm"}));
    EXPECT_EQ(HelpFilesOf(L"C:\\a\\KvnMouseApl64.exe"), (Files{L"C:\\a\\KvnUtilHelp.htm"}));
    EXPECT_EQ(HelpFilesOf(L"C:\\a\\MyKvnMouseApl.exe"), (Files{L"C:\\a\\MyKvnUtilHelp.htm"}));
}

TEST_F(ServiceFolderTest, IsUnknownWithoutTheNameInThePath) {
    EXPECT_TRUE(HelpFilesOf(L"C:\\Program Files\\Korven\\Service.exe").empty());
    EXPECT_TRUE(HelpFilesOf(L"C:\\Korven\\kvnmouseapl.exe").empty());
    EXPECT_TRUE(HelpFilesOf(L"").empty());
}

TEST_F(ServiceFolderTest, IsReadWithTheRightsItTakes) {
    DWORD rights = 0;
    DWORD process = 0;
    const ReplacedImport<"OpenProcess", decltype(OpenProcess)> open(module.Handle(),
                                                                    [&](DWORD access, BOOL inherit, DWORD processId) {
                                                                        rights = access;
                                                                        process = processId;
                                                                        return OpenProcess(access, inherit, processId);
                                                                    });
    Open();
    EXPECT_EQ(rights, static_cast<DWORD>(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ));
    EXPECT_EQ(process, GetCurrentProcessId());
}

TEST_F(ServiceFolderTest, IsUnknownWhenTheProcessCannotBeOpened) {
    const ReplacedImport<"OpenProcess", decltype(OpenProcess)> open(module.Handle(),
                                                                    [](DWORD, BOOL, DWORD) { return HANDLE{}; });
    EXPECT_TRUE(HelpFilesOf(program).empty());
}

TEST_F(ServiceFolderTest, IsUnknownWhenTheProcessHidesItsModules) {
    const ReplacedImport<"EnumProcessModules", decltype(EnumProcessModules)> enumerate(
        module.Handle(), [](HANDLE, HMODULE*, DWORD, LPDWORD) { return FALSE; });
    EXPECT_TRUE(HelpFilesOf(program).empty());
}

// With the real path of this program, which does not contain that word.
TEST_F(PageTest, HelpIsInertWhenTheServicesPathIsNotItsOwn) {
    bool opened = false;
    const ReplacedImport<"ShellExecuteW", decltype(ShellExecuteW)> execute(
        module.Handle(), [&](HWND, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, INT) {
            opened = true;
            return HINSTANCE{};
        });
    Open();
    Click(IDC_PANE_HELP);
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_FALSE(opened);
}

}  // namespace
}  // namespace kvn::test
