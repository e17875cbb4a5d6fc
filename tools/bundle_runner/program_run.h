// Running a program to its end, or to its deadline.
#pragma once

#include <windows.h>

#include <chrono>
#include <string>

#include "platform/unique_resource.h"

namespace kvn::bundle {

struct ProgramRun {
    bool hasStarted = false;
    bool hasTimedOut = false;
    DWORD exitCode = 0;
    std::chrono::milliseconds duration{};
    std::string output;  // standard output and errors
};

// `outputFile` is overwritten. All programs that the program has started end with it.
ProgramRun RunProgram(std::wstring commandLine, const std::wstring& folder, const std::wstring& outputFile,
                      std::chrono::seconds deadline);

// A program that runs in the background and ends with this object.
class RunningProgram {
public:
    RunningProgram(std::wstring commandLine, const std::wstring& folder, HANDLE output = nullptr);
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;
    ~RunningProgram();

    explicit operator bool() const { return static_cast<bool>(process); }
    DWORD Id() const { return id; }
    // False if it is still running after that.
    bool EndsWithin(std::chrono::milliseconds patience) const;
    DWORD ExitCode() const;

private:
    platform::UniqueKernelObject job;
    platform::UniqueKernelObject process;
    DWORD id = 0;
};

std::string ReadBytes(const std::wstring& path);

}  // namespace kvn::bundle
