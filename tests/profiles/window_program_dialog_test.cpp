// "Select window": the program of a window on the screen, and which window is taken.
#include <windows.h>

#include <psapi.h>

#include <future>
#include <thread>
#include <utility>

#include "platform/unique_resource.h"
#include "tests/profiles/selection_fixture.h"
#include "tests/support/owning_types.h"
#include "tests/support/replaced_import.h"
#include "tests/support/started_process.h"
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
        process = StartProcess(L'"' + Path() + L"\" \"" + title + L'"').process;
        if (!process) throw std::runtime_error("titled_window.exe is not beside the test program");
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

// A window of this process, with a thread that serves it, in front of earlier windows.
class OwnWindow {
public:
    explicit OwnWindow(std::wstring title, DWORD style = WS_OVERLAPPEDWINDOW | WS_VISIBLE, HWND ownedBy = nullptr) {
        std::promise<HWND> made;
        std::future<HWND> created = made.get_future();
        thread = std::thread([=, made = std::move(made)]() mutable {
            const UniqueWindow own(CreateWindowExW(WS_EX_TOPMOST, L"STATIC", title.c_str(), style, 0, 0, 50, 50,
                                                   ownedBy, nullptr, nullptr, nullptr));
            made.set_value(own.Get());
            MSG message{};
            while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
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

    // The dialog's proposal; cancels the dialog.
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
    EXPECT_EQ(TextOf(proposal), L"Register allocation program");
    EXPECT_EQ(ProposalOf(proposal), kExplorer);
    EXPECT_EQ(GetWindow(proposal, GW_OWNER), dialog);
    Press(proposal, IDOK);
    EXPECT_TRUE(AwaitEnd());
    EXPECT_EQ(chosen, (Programs{{L"explorer.exe", kExplorer}}));
}

TEST_F(WindowProgramDialogTest, SkipsTheFirstWindowAtTheFirstUseOnly) {
    const OwnWindow behind(L"Behind");
    const TitledProgram front(L"In front");
    Open();
    EXPECT_EQ(Proposed(), ThisProgram());
    EXPECT_EQ(Proposed(), TitledProgram::Path());
    EXPECT_EQ(Proposed(), TitledProgram::Path());
    EXPECT_FALSE(Close(IDCANCEL));
    Open();
    EXPECT_EQ(Proposed(), TitledProgram::Path()) << "another opening does not start over";
    EXPECT_FALSE(Close(IDCANCEL));
    module.reset();
    module.emplace();
    Open();
    EXPECT_EQ(Proposed(), ThisProgram()) << "another loading does";
}

TEST_F(WindowProgramDialogTest, AFirstUseThatFindsNoWindowSkipsNone) {
    Open();
    EXPECT_EQ(Proposed(), kExplorer);
    const OwnWindow behind(L"Behind");
    const TitledProgram front(L"In front");
    EXPECT_EQ(Proposed(), ThisProgram()) << "skips the first window that was ever seen";
    EXPECT_EQ(Proposed(), TitledProgram::Path());
}

TEST_F(WindowProgramDialogTest, AFirstUseWithOneWindowProposesTheExplorer) {
    const TitledProgram only(L"Only");
    Open();
    EXPECT_EQ(Proposed(), kExplorer);
    EXPECT_EQ(Proposed(), TitledProgram::Path());
}

TEST_F(WindowProgramDialogTest, OkTakesTheProgramOfTheWindow) {
    const TitledProgram front(L"In front");
    Open();
    Proposed();
    Press(OpenWindowDialog(), IDOK);
    EXPECT_TRUE(AwaitEnd());
    EXPECT_EQ(chosen, (Programs{{L"titled_window.exe", TitledProgram::Path()}}));
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
    EXPECT_EQ(chosen.size(), 1U);
}

TEST_F(WindowProgramDialogTest, PassesOverHiddenUntitledAndOwnedWindows) {
    const TitledProgram wanted(L"Wanted");
    Open();
    Proposed();
    const OwnWindow hidden(L"Hidden", WS_OVERLAPPEDWINDOW);
    const OwnWindow untitled(L"", WS_POPUP | WS_VISIBLE);
    const OwnWindow owned(L"Owned", WS_POPUP | WS_VISIBLE, hidden.Get());
    EXPECT_EQ(Proposed(), TitledProgram::Path());
}

TEST_F(WindowProgramDialogTest, ATitleOfOneCharacterIsEnough) {
    const TitledProgram behind(L"Behind");
    Open();
    Proposed();
    const OwnWindow front(L"x");
    EXPECT_EQ(Proposed(), ThisProgram());
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
    EXPECT_EQ(Proposed(), kExplorer);
    EXPECT_EQ(rights, 0x410U);
}

TEST_F(WindowProgramDialogTest, ProposesTheExplorerForAProcessThatHidesItsModules) {
    const TitledProgram front(L"In front");
    Open();
    Proposed();
    const ReplacedImport<"EnumProcessModules", decltype(EnumProcessModules)> enumerate(
        module->Handle(), [](HANDLE, HMODULE*, DWORD size, LPDWORD) {
            EXPECT_EQ(size, sizeof(HMODULE));
            return FALSE;
        });
    ASSERT_TRUE(enumerate.IsInPlace());
    EXPECT_EQ(Proposed(), kExplorer);
}

TEST_F(WindowProgramDialogTest, ProposesTheExplorerForAModuleWithoutAName) {
    const TitledProgram front(L"In front");
    Open();
    Proposed();
    const ReplacedImport<"GetModuleFileNameExW", decltype(GetModuleFileNameExW)> name(
        module->Handle(), [](HANDLE, HMODULE, LPWSTR, DWORD) { return DWORD{0}; });
    ASSERT_TRUE(name.IsInPlace());
    EXPECT_EQ(Proposed(), kExplorer);
}

TEST_F(WindowProgramDialogTest, ALongPathIsShownWholeAndTakenToTheLimit) {
    const TitledProgram front(L"In front");
    Open();
    Proposed();
    const std::wstring path = L"C:\\" + std::wstring(255, L'p') + L"\U0001F600\\" + std::wstring(2000, L'q');
    const ReplacedImport<"GetModuleFileNameExW", decltype(GetModuleFileNameExW)> name(
        module->Handle(), [&](HANDLE, HMODULE, LPWSTR buffer, DWORD size) {
            EXPECT_EQ(size, 1024U);
            // Like old versions of Windows, without a final zero.
            path.copy(buffer, size);
            return size;
        });
    const HWND proposal = OpenWindowDialog();
    EXPECT_EQ(ProposalOf(proposal), path.substr(0, 1024));
    Press(proposal, IDOK);
    EXPECT_TRUE(AwaitEnd());
    ASSERT_EQ(chosen.size(), 1U);
    EXPECT_EQ(chosen[0].path, path.substr(0, 258)) << "no pair is split";
    EXPECT_EQ(chosen[0].name, std::wstring(255, L'p'));
}

}  // namespace
}  // namespace kvn::test
