#include "service/settings/front_program.h"

#include <utility>

#include "service/settings/program_path.h"

namespace kvn::service {
namespace {

bool IsOwn(HWND window) {
    DWORD processId = 0;
    GetWindowThreadProcessId(window, &processId);
    return processId == GetCurrentProcessId();
}

}  // namespace

FrontProgram::Change FrontProgram::Look() {
    const HWND found = GetForegroundWindow();
    if (!found || IsOwn(found)) return {};
    // A store app can appear in its frame later, and a window's handle can come back in another process.
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
