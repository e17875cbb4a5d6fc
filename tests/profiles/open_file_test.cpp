// "Reference": a program chosen in the dialog that opens files.
#include <windows.h>

#include <cderr.h>
#include <commdlg.h>

#include <cstring>
#include <functional>

#include "tests/profiles/selection_fixture.h"
#include "tests/support/replaced_import.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

constexpr int kFileNameField = 0x47C;

// The real dialog, driven by messages.
class OpenFileTest : public SelectionTest {
protected:
    HWND OpenFileDialog() const {
        Press(IDC_PROGRAMS_REFERENCE);
        return Await("the dialog that opens files", [] {
            return FindTopLevelWindow(
                [](HWND window) { return IsWindowVisible(window) && GetDlgItem(window, kFileNameField) != nullptr; });
        });
    }
    static void Enter(HWND fileDialog, const std::wstring& file) {
        SendDlgItemMessageW(fileDialog, kFileNameField, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(file.c_str()));
        PostMessageW(fileDialog, WM_COMMAND, IDOK, 0);
    }
    static void Cancel(HWND fileDialog) {
        PostMessageW(fileDialog, WM_COMMAND, IDCANCEL, 0);
        Await("the end of the dialog that opens files", [=] { return !IsWindow(fileDialog); });
    }
};

TEST_F(OpenFileTest, NamesTheProgramByItsFileNameWithExtension) {
    menu.own.AddShortcut(L"Selected.lnk", L"C:\\windows\\regedit.exe");
    Open();
    Select(0);
    const HWND files = OpenFileDialog();
    EXPECT_EQ(TextOf(files), L"Open file");
    EXPECT_EQ(GetWindow(files, GW_OWNER), dialog);
    Enter(files, L"C:\\windows\\notepad.exe");
    EXPECT_TRUE(AwaitEnd());
    EXPECT_EQ(chosen, (Programs{{L"notepad.exe", L"C:\\windows\\notepad.exe"}})) << "the selection does not matter";
}

TEST_F(OpenFileTest, TakesAFileOfAnyKind) {
    const std::wstring file = menu.own.AddFile(L"plain.txt", "text");
    Open();
    Enter(OpenFileDialog(), file);
    EXPECT_TRUE(AwaitEnd());
    EXPECT_EQ(chosen, (Programs{{L"plain.txt", file}}));
}

TEST_F(OpenFileTest, CancelKeepsTheSelectionOpen) {
    Open();
    Cancel(OpenFileDialog());
    EXPECT_TRUE(StaysOpen());
    Cancel(OpenFileDialog());
    EXPECT_FALSE(Close(IDCANCEL));
    EXPECT_TRUE(chosen.empty());
}

TEST_F(OpenFileTest, IsNotHeldBackByAClickOnEmptySpace) {
    Open();
    ClickEmptySpace();
    Enter(OpenFileDialog(), L"C:\\windows\\notepad.exe");
    EXPECT_TRUE(AwaitEnd());
    EXPECT_EQ(chosen.size(), 1U);
}

TEST_F(OpenFileTest, RefusesAFileThatIsNotThere) {
    Open();
    const HWND files = OpenFileDialog();
    Enter(files, L"C:\\windows\\no such program.exe");
    const HWND refusal = Await("the refusal", [=] {
        return FindTopLevelWindow([=](HWND window) {
            return IsWindowVisible(window) && GetWindow(window, GW_OWNER) == files && ClassOf(window) == kDialogClass;
        });
    });
    PostMessageW(refusal, WM_COMMAND, IDOK, 0);
    Await("the end of the refusal", [=] { return !IsWindow(refusal); });
    Cancel(files);
    EXPECT_TRUE(StaysOpen());
    EXPECT_TRUE(chosen.empty());
}

// Replaces the dialog that opens files.
class OpenFileRequestTest : public SelectionTest {
protected:
    static inline std::function<BOOL(OPENFILENAMEW&)> answer;

    static BOOL WINAPI Show(OPENFILENAMEW* request) { return answer(*request); }
    template <typename Function>
    static FARPROC AsFunction(Function* function) {
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
    }

    const ReplacedImport<"GetProcAddress", decltype(GetProcAddress)> find{
        module->Handle(), [](HMODULE library, LPCSTR name) {
            if (std::strcmp(name, "GetOpenFileNameW") == 0) return AsFunction(&Show);
            return GetProcAddress(library, name);
        }};
};

TEST_F(OpenFileRequestTest, AsksForAnExistingProgramFile) {
    std::wstring filter;
    answer = [&](OPENFILENAMEW& request) {
        EXPECT_EQ(request.lStructSize, sizeof(OPENFILENAMEW));
        EXPECT_EQ(request.hwndOwner, dialog);
        EXPECT_EQ(request.Flags, static_cast<DWORD>(OFN_FILEMUSTEXIST));
        EXPECT_EQ(request.nMaxFile, 260U);
        EXPECT_EQ(request.lpstrFile[0], L'\0');
        EXPECT_EQ(request.nMaxFileTitle, 260U);
        EXPECT_EQ(std::wstring(request.lpstrTitle), L"Open file");
        EXPECT_EQ(std::wstring(request.lpstrDefExt), L"exe");
        for (const wchar_t* text = request.lpstrFilter; *text != L'\0'; text += std::wcslen(text) + 1) {
            filter += std::wstring(text) + L"|";
        }
        return FALSE;
    };
    Open();
    Press(IDC_PROGRAMS_REFERENCE);
    EXPECT_TRUE(StaysOpen());
    EXPECT_EQ(filter, L"exe(*.exe)|*.exe|All files(*.*)|*.*|");
    EXPECT_FALSE(Close(IDCANCEL));
    EXPECT_TRUE(chosen.empty());
}

TEST_F(OpenFileRequestTest, TakesTheTitleAndThePathAsTheyCome) {
    answer = [](OPENFILENAMEW& request) {
        lstrcpynW(request.lpstrFile, (L"C:\\" + std::wstring(256, L'p')).c_str(), 260);
        lstrcpynW(request.lpstrFileTitle, std::wstring(259, L't').c_str(), 260);
        return TRUE;
    };
    Open();
    EXPECT_TRUE(Close(IDC_PROGRAMS_REFERENCE));
    EXPECT_EQ(chosen, (Programs{{std::wstring(259, L't'), L"C:\\" + std::wstring(256, L'p')}}));
}

std::wstring CurrentFolder() {
    wchar_t folder[MAX_PATH]{};
    GetCurrentDirectoryW(MAX_PATH, folder);
    return folder;
}

TEST_F(OpenFileRequestTest, LeavesTheCurrentFolderAsItWas) {
    const std::wstring before = CurrentFolder();
    for (const BOOL isChosen : {FALSE, TRUE}) {
        answer = [=](OPENFILENAMEW& request) {
            EXPECT_TRUE(SetCurrentDirectoryW(L"C:\\windows\\system32"));
            lstrcpynW(request.lpstrFile, L"C:\\windows\\system32\\x.exe", 260);
            return isChosen;
        };
        Open();
        Press(IDC_PROGRAMS_REFERENCE);
        if (isChosen) {
            EXPECT_TRUE(AwaitEnd());
        } else {
            EXPECT_TRUE(StaysOpen());
            EXPECT_FALSE(Close(IDCANCEL));
        }
        EXPECT_EQ(CurrentFolder(), before);
        SetCurrentDirectoryW(before.c_str());
    }
}

}  // namespace
}  // namespace kvn::test
