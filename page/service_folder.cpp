#include "page/service_folder.h"

#include <windows.h>

#include <psapi.h>

#include <array>

#include "platform/service_window.h"
#include "platform/unique_resource.h"

namespace kvn::page {
namespace {

constexpr std::size_t kMaxModulePath = 540;

platform::UniqueKernelObject OpenServiceProcess() {
    DWORD processId = 0;
    const HWND service = platform::FindService();
    if (service == nullptr || GetWindowThreadProcessId(service, &processId) == 0) return {};
    return platform::UniqueKernelObject(OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, processId));
}

std::wstring ProgramOf(HANDLE process) {
    HMODULE program = nullptr;
    constexpr DWORD kRoomForOne = sizeof(HMODULE);
    DWORD bytesNeeded = 0;
    std::array<wchar_t, kMaxModulePath + 1> path{};
    if (!EnumProcessModules(process, &program, kRoomForOne, &bytesNeeded)) return {};
    GetModuleFileNameExW(process, program, path.data(), static_cast<DWORD>(kMaxModulePath));
    return path.data();
}

}  // namespace

std::wstring ServiceFolder() {
    const platform::UniqueKernelObject process = OpenServiceProcess();
    if (!process) return {};
    const std::wstring program = ProgramOf(process.Get());
    const std::size_t end = program.find(platform::kServiceName);
    return end == std::wstring::npos ? std::wstring() : program.substr(0, end);
}

}  // namespace kvn::page
