#include "platform/window_program.h"

#include <psapi.h>

#include "platform/unique_resource.h"

namespace kvn::platform {
namespace {

UniqueKernelObject OpenProcessOf(HWND window) {
    DWORD processId = 0;
    if (GetWindowThreadProcessId(window, &processId) == 0) return {};
    return UniqueKernelObject(OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, processId));
}

}  // namespace

std::wstring ProgramOfWindow(HWND window, DWORD maxLength) {
    const UniqueKernelObject process = OpenProcessOf(window);
    if (!process) return {};
    // A process's first module is its program.
    HMODULE program = nullptr;
    constexpr DWORD kRoomForOne = sizeof(HMODULE);
    DWORD bytesNeeded = 0;
    if (!EnumProcessModules(process.Get(), &program, kRoomForOne, &bytesNeeded)) return {};
    // One more than requested, since a truncated path may lack its final zero.
    std::wstring path(maxLength + 1, L'\0');
    if (GetModuleFileNameExW(process.Get(), program, path.data(), maxLength) == 0) return {};
    path.resize(path.find(L'\0'));
    return path;
}

}  // namespace kvn::platform
