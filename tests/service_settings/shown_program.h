// Real programs whose windows a test brings to the front.
#pragma once

#include <windows.h>

#include <string>

#include "platform/unique_resource.h"

namespace kvn::test {

// A folder for copies of the program, removed with them afterwards.
class ProgramFolder {
public:
    ProgramFolder();
    ProgramFolder(const ProgramFolder&) = delete;
    ProgramFolder& operator=(const ProgramFolder&) = delete;
    ~ProgramFolder();

    // The full path of a copy of the program under this name, which may include folders.
    std::wstring Copy(const std::wstring& name) const;
    const std::wstring& Path() const { return path; }

private:
    std::wstring path;
};

class ShownProgram {
public:
    // Starts the program and waits for its window, or for the one inside the window with the title `parent`.
    explicit ShownProgram(const std::wstring& programPath, const std::wstring& windowClass = L"KvnFrontWindow",
                          const std::wstring& parent = {});
    ShownProgram(const ShownProgram&) = delete;
    ShownProgram& operator=(const ShownProgram&) = delete;
    ~ShownProgram();

    HWND Window() const { return window; }
    DWORD ProcessId() const { return processId; }
    const std::wstring& Title() const { return title; }
    void BringToFront() const;

private:
    platform::UniqueKernelObject process;
    DWORD processId = 0;
    std::wstring title;
    HWND window = nullptr;
};

}  // namespace kvn::test
