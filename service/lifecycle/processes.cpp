#include "service/lifecycle/processes.h"

namespace kvn::service {
namespace {

constexpr DWORD kLongestPath = 32767;

}  // namespace

std::wstring ProgramPath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size() || path.size() >= kLongestPath) return path.substr(0, length);
        path.resize(kLongestPath);
    }
}

std::wstring ProgramFolder() {
    const std::wstring path = ProgramPath();
    return path.substr(0, path.find_last_of(L'\\') + 1);
}

StartedProcess StartProcess(const std::wstring& program, const std::wstring& quotedArguments) {
    std::wstring commandLine = L'"' + program + L"\" " + quotedArguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &started)) {
        return {};
    }
    const platform::UniqueKernelObject thread(started.hThread);
    return {platform::UniqueKernelObject(started.hProcess), started.dwProcessId};
}

}  // namespace kvn::service
