#include "service/input/window_commands.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/window_text.h"
#include "service/input/done_texts.h"

namespace kvn::service {
namespace {

constexpr std::array<std::wstring_view, 4> kShellClasses{L"Progman", L"WorkerW", L"Shell_TrayWnd",
                                                         L"Shell_SecondaryTrayWnd"};

bool IsOfShell(HWND window) {
    if (window == GetShellWindow() || window == GetDesktopWindow()) return true;
    return std::ranges::find(kShellClasses, platform::ClassNameOf(window)) != kShellClasses.end();
}

// Null if there is none, or it belongs to the shell.
HWND WindowInFront() {
    const HWND window = GetForegroundWindow();
    return window == nullptr || IsOfShell(window) ? nullptr : window;
}

std::wstring Post(HWND window, WPARAM command, const wchar_t* done) {
    return PostMessageW(window, WM_SYSCOMMAND, command, 0) ? done : L"the window takes no commands";
}

bool HasBox(HWND window, LONG_PTR box) {
    return (GetWindowLongPtrW(window, GWL_STYLE) & box) != 0;
}

std::wstring CloseWindowInFront(HWND window) {
    return Post(window, SC_CLOSE, L"closed the window");
}

// For a dialog, its owner is maximized or minimized instead; a dialog of the desktop is left alone.
bool CanGoTo(HWND owner, LONG_PTR box) {
    return owner != nullptr && !IsOfShell(owner) && HasBox(owner, box);
}

std::wstring MaximizeOrRestore(HWND window) {
    const HWND owner = GetAncestor(window, GA_ROOTOWNER);
    if (!CanGoTo(owner, WS_MAXIMIZEBOX)) return L"the window has no such box";
    if (IsZoomed(owner)) return Post(owner, SC_RESTORE, L"restored the window");
    return Post(owner, SC_MAXIMIZE, L"maximized the window");
}

std::wstring Minimize(HWND window) {
    const HWND owner = GetAncestor(window, GA_ROOTOWNER);
    if (!CanGoTo(owner, WS_MINIMIZEBOX)) return L"the window has no such box";
    return Post(owner, SC_MINIMIZE, L"minimized the window");
}

struct CommandRow {
    Action action;
    std::wstring (*carryOut)(HWND);
};

constexpr std::array<CommandRow, 3> kCommands{{
    {Action::CloseWindow, CloseWindowInFront},
    {Action::MaximizeWindow, MaximizeOrRestore},
    {Action::MinimizeWindow, Minimize},
}};

}  // namespace

std::wstring DoWindowCommand(Action action) {
    const auto command = std::ranges::find(kCommands, action, &CommandRow::action);
    if (command == kCommands.end()) return kNothingDone;
    const HWND window = WindowInFront();
    return window == nullptr ? L"no window in front" : command->carryOut(window);
}

}  // namespace kvn::service
