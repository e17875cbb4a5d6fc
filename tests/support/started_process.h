// Starting another program.
#pragma once

#include <windows.h>

#include <string>

#include "platform/unique_resource.h"

namespace kvn::test {

struct StartedProcess {
    bool hasStarted = false;
    // Empty if it has not started; undefined for a program of Wine's host.
    platform::UniqueKernelObject process;
    platform::UniqueKernelObject thread;  // its first one
};

// Calls `create`, which calls CreateProcess, and repeats it after a random error of Wine: rarely, a new process ends
// before its first instruction.
template <typename Create>
bool CreatesProcess(Create create) {
    constexpr int kAttempts = 3;
    for (int attempt = 1; !create(); ++attempt) {
        if (GetLastError() != ERROR_INTERNAL_ERROR || attempt == kAttempts) return false;
    }
    return true;
}

// The command line begins with the program, in quotation marks if its path may contain blanks. The flags are those of
// CreateProcess; without a folder the program starts in the current one.
inline StartedProcess StartProcess(std::wstring commandLine, DWORD flags = 0, const wchar_t* folder = nullptr) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    const auto create = [&] {
        return CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, flags, nullptr, folder, &startup,
                              &started) != FALSE;
    };
    if (!CreatesProcess(create)) return {};
    return {true, platform::UniqueKernelObject(started.hProcess), platform::UniqueKernelObject(started.hThread)};
}

}  // namespace kvn::test
