// "Select window": the program of a window on the screen, and which window that is.
#include <windows.h>

#include <psapi.h>

#include <future>
#include <thread>
#include <utility>

#include "platform/unique_resource.h"
#include "tests/profiles/selection_fixture.h"
#include "tests/support/replaced_import.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

std::wstring ThisProgram() {
    wchar_t path[MAX_PATH]{};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return path;
}

std::wstring ProgramBeside(const wchar_t* name) {
    const std::wstring path = ThisProgram();
    return path.substr(0, path.rfind(L'\\') + 1) + name;
}

// Another process with a window in front of all others.
class TitledProgram {
public:
    explicit TitledProgram(const std::wstring& title) {
        std::wstring command = L"titled_window.exe \"" + title + L"\"";
        STARTUPINFOW start{};
        start.cb = sizeof start;
        PROCESS_INFORMATION information{};
        if (!CreateProcessW(ProgramBeside(L"titled_window.exe").c_str(), command.data(), nullptr, nullptr, FALSE, 0,
                            nullptr, nullptr, &start, &information)) {
            throw std::runtime_error("titled_window.exe is not beside the test program");
        }
        process.Reset(information.hProcess);
        CloseHandle(information.hThread);
        window = Await("the other program's window", [&] {
            const HWND found = FindWindowW(L"KvnTitledWindow", title.c_str());
            return IsWindowVisible(found) ? found : nullptr;
        });
    }
    TitledProgram(const TitledProgram&) = delete;
    TitledProgram& operator=(const TitledProgram&) = delete;
    ~TitledProgram() {
        PostMessageW(window, WM_CLOSE, 0, 0);
        WaitForSingleObject(process.Get(), INFINITE);
    }

    static std::wstring Path() { return ProgramBeside(L"titled_window.exe"); }

private:
    platform::UniqueKernelObject process;
    HWND window = nullptr;
};

// A window of this process, in a thread that answers for it, in front of those that were there before.
class OwnWindow {
public:
    explicit OwnWindow(std::wstring title, DWORD style = WS_OVERLAPPEDWINDOW | WS_VISIBLE, HWND ownedBy = nullptr) {
        std::promise<HWND> made;
        std::future<HWND> created = made.get_future();
        thread = std::thread([=, made = std::move(made)]() mutable {
            const HWND own = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", title.c_str(), style, 0, 0, 50, 50, ownedBy,
                                             nullptr, nullptr, nullptr);
            made.set_value(own);
            MSG message{};
            while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
            DestroyWindow(own);
        });
        window = created.get();
    }
    OwnWindow(const OwnWindow&) = delete;
    OwnWindow& operator=(const OwnWindow&) = delete;
    ~OwnWindow() {
        PostThreadMessageW(GetWindowThreadProcessId(window, nullptr), WM_QUIT, 0, 0);
        thread.join();
    }

    HWND Get() const { return window; }

private:
    HWND window = nullptr;
    std::thread thread;
};

class WindowProgramDialogTest : public SelectionTest {
protected:
    static inline const std::wstring kExplorer = L"C:\\windows\\explorer.exe";

    // What the dialog proposes; cancels it.
    std::wstring Proposed() {
        const HWND proposal = OpenWindowDialog();
        std::wstring path = ProposalOf(proposal);
        Press(proposal, IDCANCEL);
        Await("the end of the proposal", [=] { return !IsWindow(proposal); });
        return path;
    }
};

TEST_F(WindowProgramDialogTest, ProposesTheExplorerWithoutAnyWindow) {
    Open();
    const HWND proposal = OpenWindowDialog();
    EXPECT_EQ(L"Register allocation program", TextOf(proposal));
    EXPECT_EQ(kExplorer, ProposalOf(proposal));
    EXPECT_EQ(dialog, GetWindow(proposal, GW_OWNER));
    Press(proposal, IDOK);
    EXPECT_TRUE(AwaitEnd());
    EXPECT_EQ((Programs{{L"explorer.exe", kExplorer}}), chosen);
}

TEST_F(WindowProgramDialogTest, SkipsTheFirstWindowAtTheFirstUseOnly) {
    const OwnWindow behind(L"Behind");
    const TitledProgram front(L"In front");
    Open();
    EXPECT_EQ(ThisProgram(), Proposed());
    EXPECT_EQ(TitledProgram::Path(), Proposed());
    EXPECT_EQ(TitledProgram::Path(), Proposed());
    EXPECT_FALSE(Close(IDCANCEL));
    Open();
    EXPECT_EQ(TitledProgram::Path(), Proposed()) << "an opening is no new beginning";
    EXPECT_FALSE(Close(IDCANCEL));
    module.reset();
    module.emplace();
    Open();
    EXPECT_EQ(ThisProgram(), Proposed()) << "a module is";
}

TEST_F(WindowProgramDialogTest, AFirstUseThatFindsNoWindowSkipsNone) {
    Open();
    EXPECT_EQ(kExplorer, Proposed());
    const OwnWindow behind(L"Behind");
    const TitledProgram front(L"In front");
    EXPECT_EQ(ThisProgram(), Proposed()) << "the first window that was ever seen is skipped";
    EXPECT_EQ(TitledProgram::Path(), Proposed());
}

TEST_F(WindowProgramDialogTest, AFirstUseWithOneWindowProposesTheExplorer) {
    const TitledProgram only(L"Only");
    Open();
    EXPECT_EQ(kExplorer, Proposed());
    EXPECT_EQ(TitledProgram::Path(), Proposed());
}

TEST_F(WindowProgramDialogTest, OkTakesTheProgramOfTheWindow) {
    const TitledProgram front(L"In front");
    Open();
    Proposed();
    Press(OpenWindowDialog(), IDOK);
    EXPECT_TRUE(AwaitEnd());
    EXPECT_EQ((Programs{{L"titled_window.exe", TitledProgram::Path()}}), chosen);
}

TEST_F(WindowProgramDialogTest, CancelKeepsTheSelectionOpen) {
    Open();
    Proposed();
    EXPECT_TRUE(StaysOpen());
    EXPECT_FALSE(Close(IDCANCEL));
    EXPECT_TRUE(chosen.empty());
}

TEST_F(WindowProgramDialogTest, IsNotHeldBackByAClickOnEmptySpace) {
    Open();
    ClickEmptySpace();
    Press(OpenWindowDialog(), IDOK);
    EXPECT_TRUE(AwaitEnd());
    EXPECT_EQ(1U, chosen.size());
}

TEST_F(WindowProgramDialogTest, PassesOverHiddenUntitledAndOwnedWindows) {
    const TitledProgram wanted(L"Wanted");
    Open();
    Proposed();
    const OwnWindow hidden(L"Hidden", WS_OVERLAPPEDWINDOW);
    const OwnWindow untitled(L"", WS_POPUP | WS_VISIBLE);
    const OwnWindow owned(L"Owned", WS_POPUP | WS_VISIBLE, hidden.Get());
    EXPECT_EQ(TitledProgram::Path(), Proposed());
}

TEST_F(WindowProgramDialogTest, ATitleOfOneCharacterIsEnough) {
    const TitledProgram behind(L"Behind");
    Open();
    Proposed();
    const OwnWindow front(L"x");
    EXPECT_EQ(ThisProgram(), Proposed());
}

TEST_F(WindowProgramDialogTest, ProposesTheExplorerForAProcessThatCannotBeOpened) {
    const OwnWindow behind(L"Behind");
    const TitledProgram front(L"In front");
    Open();
    Proposed();
    DWORD rights = 0;
    const ReplacedImport<"OpenProcess", decltype(OpenProcess)> open(module->Handle(), [&](DWORD access, BOOL, DWORD) {
        rights = access;
        return HANDLE{};
    });
    ASSERT_TRUE(open.IsInPlace());
    EXPECT_EQ(kExplorer, Proposed());
    EXPECT_EQ(0x410U, rights);
}

TEST_F(WindowProgramDialogTest, ProposesTheExplorerForAProcessThatHidesItsModules) {
    const TitledProgram front(L"In front");
    Open();
    Proposed();
    const ReplacedImport<"EnumProcessModules", decltype(EnumProcessModules)> enumerate(
        module->Handle(), [](HANDLE, HMODULE*, DWORD size, LPDWORD) {
            EXPECT_EQ(sizeof(HMODULE), size);
            return FALSE;
        });
    ASSERT_TRUE(enumerate.IsInPlace());
    EXPECT_EQ(kExplorer, Proposed());
}

TEST_F(WindowProgramDialogTest, ProposesTheExplorerForAModuleWithoutAName) {
    const TitledProgram front(L"In front");
    Open();
    Proposed();
    const ReplacedImport<"GetModuleFileNameExW", decltype(GetModuleFileNameExW)> name(
        module->Handle(), [](HANDLE, HMODULE, LPWSTR, DWORD) { return DWORD{0}; });
    ASSERT_TRUE(name.IsInPlace());
    EXPECT_EQ(kExplorer, Proposed());
}

TEST_F(WindowProgramDialogTest, ALongPathIsShownWholeAndTakenToTheLimit) {
    const TitledProgram front(L"In front");
    Open();
    Proposed();
    const std::wstring path = L"C:\\" + std::wstring(255, L'p') + L"\U0001F600\\" + std::wstring(2000, L'q');
    const ReplacedImport<"GetModuleFileNameExW", decltype(GetModuleFileNameExW)> name(
        module->Handle(), [&](HANDLE, HMODULE, LPWSTR buffer, DWORD size) {
            EXPECT_EQ(1024U, size);
            // As old versions of Windows do it: without a final zero.
            path.copy(buffer, size);
            return size;
        });
    const HWND proposal = OpenWindowDialog();
    EXPECT_EQ(path.substr(0, 1024), ProposalOf(proposal));
    Press(proposal, IDOK);
    EXPECT_TRUE(AwaitEnd());
    ASSERT_EQ(1U, chosen.size());
    EXPECT_EQ(path.substr(0, 258), chosen[0].path) << "no pair is split";
    EXPECT_EQ(std::wstring(255, L'p'), chosen[0].name);
}

}  // namespace
}  // namespace kvn::test
