// Starting another program.
#pragma once

#include <windows.h>

#include <string>

#include "platform/unique_resource.h"

namespace kvn::test {

struct StartedProcess {
    bool isStarted = false;
    platform::UniqueKernelObject process;  // empty when it cannot be started, and of a program of Wine's host
    platform::UniqueKernelObject thread;   // its first one
};

// The command line begins with the program, in quotation marks where its path may hold blanks. The flags are those of
// CreateProcess; without a folder the program starts in this one's.
inline StartedProcess StartProcess(std::wstring commandLine, DWORD flags = 0, const wchar_t* folder = nullptr) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, flags, nullptr, folder, &startup,
                        &started)) {
        return {};
    }
    return {true, platform::UniqueKernelObject(started.hProcess), platform::UniqueKernelObject(started.hThread)};
}

}  // namespace kvn::test
