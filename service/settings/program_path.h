// Programs by their paths: the program of a window, and whether two paths name the same program.
#pragma once

#include <windows.h>

#include <map>
#include <string>

namespace kvn::service {

// The path of a process's program file; empty if Windows does not report it.
std::wstring ProgramOfProcess(DWORD processId);

// The process that a window belongs to: its own, or the app's for the frame around a store app; 0 if there is none.
DWORD ProcessOfWindow(HWND window);

// The path as Windows would write it: short names and links resolved, if the file can be found.
std::wstring ResolvedPath(const std::wstring& path);

bool IsSameText(const std::wstring& left, const std::wstring& right);  // ignores case

// Compares the user's entries with the program in front. Looks each entry up once.
class ProgramComparison {
public:
    // Sets the program in front. Empty: none, which matches no entry.
    void SetProgram(const std::wstring& path);
    // The files behind the entries may have changed.
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
