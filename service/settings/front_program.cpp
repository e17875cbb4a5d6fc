#include "service/settings/front_program.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "platform/window_text.h"
#include "service/settings/program_path.h"

namespace kvn::service {
namespace {

// The classes of the list of programs that Windows shows while Alt+Tab is held, from the oldest Windows to the newest.
// If the list counted as a program, a change of the profile could end the function that holds Alt.
constexpr std::array<std::wstring_view, 5> kSwitcherClasses{L"#32771", L"TaskSwitcherWnd", L"MultitaskingViewFrame",
                                                            L"ForegroundStaging", L"XamlExplorerHostIslandWindow"};

bool IsSwitcher(HWND window) {
    return std::ranges::find(kSwitcherClasses, platform::ClassNameOf(window)) != kSwitcherClasses.end();
}

bool IsOwn(HWND window) {
    DWORD processId = 0;
    GetWindowThreadProcessId(window, &processId);
    return processId == GetCurrentProcessId();
}

}  // namespace

FrontProgram::Change FrontProgram::Look() {
    const HWND found = GetForegroundWindow();
    if (!found || IsOwn(found) || IsSwitcher(found)) return {};
    // A Store app may appear in its frame later, and another process may reuse a window's handle.
    const DWORD foundProcess = ProcessOfWindow(found);
    Change change{.isOtherWindow = found != window};
    if (!change.isOtherWindow && foundProcess == processId) return change;

    std::wstring foundProgram = foundProcess == 0 ? std::wstring() : ProgramOfProcess(foundProcess);
    change.isOtherProgram = foundProgram != program;
    window = found;
    processId = foundProcess;
    program = std::move(foundProgram);
    return change;
}

}  // namespace kvn::service
