#include "profiles/window_program_dialog.h"

#include <shlwapi.h>

#include <array>
#include <cstdint>
#include <string>
#include <utility>

#include "platform/boundary.h"
#include "platform/modal_dialog.h"
#include "platform/window_program.h"
#include "platform/window_text.h"
#include "resources/resource.h"

namespace kvn::profiles {
namespace {

constexpr int kMaxTaken = 259;  // characters of the shown text
constexpr DWORD kMaxProposed = 1024;
constexpr wchar_t kExplorer[] = L"\\explorer.exe";

// The first use in a loaded module passes over the first window; later uses take it. The count lives as long as the
// module: docs/kept-behaviour.md.
constexpr std::uint32_t kToPassOver = 1;
std::uint32_t windowsPassedOver = 0;

// A window that a user would call a program: visible, titled and no dialog of another window.
bool IsProgramWindow(HWND window) {
    return IsWindowVisible(window) && GetWindowTextLengthW(window) >= 1 && GetWindow(window, GW_OWNER) == nullptr;
}

BOOL ExamineWindow(HWND window, HWND proposal) {
    if (!IsProgramWindow(window)) return TRUE;
    if (windowsPassedOver != kToPassOver) {
        ++windowsPassedOver;
        return TRUE;
    }
    const std::wstring program = platform::ProgramOfWindow(window, kMaxProposed);
    // The program of another user, or of a process that has just ended, cannot be read: the first proposal stays.
    if (!program.empty()) SetWindowTextW(proposal, program.c_str());
    return FALSE;
}

BOOL CALLBACK ExamineWindowAtBoundary(HWND window, LPARAM proposal) {
    return platform::AtBoundary<BOOL>(FALSE, [&] { return ExamineWindow(window, reinterpret_cast<HWND>(proposal)); });
}

std::wstring ExplorerPath() {
    std::array<wchar_t, MAX_PATH> folder{};
    GetWindowsDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    return folder.data() + std::wstring(kExplorer);
}

class WindowProgramDialog final : public platform::ModalDialog {
public:
    std::optional<model::ApplicationEntry> Run(HINSTANCE module, HWND owner) {
        if (!RunModal(module, IDD_REGISTER_PROGRAM, owner)) return std::nullopt;
        return std::move(entry);
    }

private:
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnInitDialog() const;
    void OnOk();

    model::ApplicationEntry entry;
};

INT_PTR WindowProgramDialog::OnMessage(UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    switch (message) {
        case WM_INITDIALOG:
            OnInitDialog();
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDOK) OnOk();
            if (LOWORD(wParam) == IDCANCEL) End(platform::DialogResult::Cancelled);
            return TRUE;
        default:
            return FALSE;
    }
}

void WindowProgramDialog::OnInitDialog() const {
    const HWND proposal = Control(IDC_PROGRAM_PATH);
    SetWindowTextW(proposal, ExplorerPath().c_str());
    EnumWindows(ExamineWindowAtBoundary, reinterpret_cast<LPARAM>(proposal));
}

void WindowProgramDialog::OnOk() {
    entry.path = platform::WindowText(Control(IDC_PROGRAM_PATH), kMaxTaken);
    entry.name = PathFindFileNameW(entry.path.c_str());
    End(platform::DialogResult::Accepted);
}

}  // namespace

std::optional<model::ApplicationEntry> RunWindowProgramDialog(HINSTANCE module, HWND owner) {
    return WindowProgramDialog().Run(module, owner);
}

}  // namespace kvn::profiles
