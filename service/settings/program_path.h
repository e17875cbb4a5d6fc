// Programs by their paths: which one a window belongs to, and whether two paths mean the same one.
#pragma once

#include <windows.h>

#include <map>
#include <string>

namespace kvn::service {

// The path of a process's program file; empty when Windows does not say.
std::wstring ProgramOfProcess(DWORD processId);

// The process that a window stands for: its own, or for the frame around a store app the app's; 0 when there is none.
DWORD ProcessOfWindow(HWND window);

// The path as Windows itself would write it: short names and links resolved, if the file can be found.
std::wstring ResolvedPath(const std::wstring& path);

bool IsSameText(const std::wstring& left, const std::wstring& right);  // without regard to case

// Compares people's entries with the program in front. It looks each entry up once.
class ProgramComparison {
public:
    // Follows a program; empty: none, which equals nothing.
    void SetProgram(const std::wstring& path);
    // The entries may have become other files.
    void Forget() { resolvedEntries.clear(); }

    // A full path, or the name of a file in any folder.
    bool IsProgram(const std::wstring& entry);

private:
    bool IsFileName(const std::wstring& entry) const;
    bool IsWorthLooking(const std::wstring& entry) const;
    const std::wstring& Resolved(const std::wstring& entry);

    std::wstring program;
    std::wstring resolvedProgram;
    std::map<std::wstring, std::wstring> resolvedEntries;
};

}  // namespace kvn::service
