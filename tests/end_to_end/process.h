// Processes that a test starts and that never outlive it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "platform/unique_resource.h"

namespace kvn::end_to_end {

class Process {
public:
    // `arguments` are quoted here; none may contain a quote or end with a backslash. Throws StoryError.
    Process(HANDLE job, const std::wstring& program, const std::vector<std::wstring>& arguments);

    DWORD Id() const { return id; }
    bool IsRunning() const;
    // Waits until the process has ended by itself; throws StoryError if it does not.
    DWORD WaitForExitCode() const;

private:
    std::string name;
    platform::UniqueKernelObject process;
    DWORD id = 0;
};

// All processes that one test starts. Those that still run at the end, or when the test program itself dies, are
// killed.
class ProcessGroup {
public:
    ProcessGroup();
    Process Start(const std::wstring& program, const std::vector<std::wstring>& arguments) const;
    // Returns when all of them have ended.
    void KillAll() const;

private:
    platform::UniqueKernelObject job;
};

// The folder of the running program, with its final backslash: everything that the build makes lies there or below.
std::wstring ProgramFolder();

}  // namespace kvn::end_to_end
