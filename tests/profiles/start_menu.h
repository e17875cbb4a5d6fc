// A Start menu of the test's own: program folders of all users and of this user that nobody else sees, and what a test
// puts there.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "tests/support/sandboxed_user.h"

namespace kvn::test {

inline constexpr wchar_t kNotepad[] = L"C:\\windows\\notepad.exe";

// A temporary folder with what a test puts into it, gone afterwards however deep it is. Names are relative to it.
class ScratchFolder {
public:
    ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();

    const std::wstring& Path() const { return path; }
    std::wstring PathOf(const std::wstring& name) const { return path + L"\\" + name; }

    std::wstring AddFolder(const std::wstring& name) const;
    // Creates this number of folders of that name, one in the other, at any path length; returns the path of the
    // innermost.
    std::wstring AddDeepFolder(const std::wstring& name, std::size_t levels) const;
    std::wstring AddFile(const std::wstring& name, std::string_view content = {}) const;
    // A link to a folder of this one; the target is relative to the folder that the link lies in.
    std::wstring AddFolderLink(const std::wstring& name, const std::wstring& target) const;
    // A shortcut as the shell saves it; folders are made as needed.
    std::wstring AddShortcut(const std::wstring& name, const std::wstring& target) const;

private:
    std::wstring parent;
    std::wstring path;
};

struct StartMenu {
    StartMenu();

    const SandboxedUser user;
    const SandboxedHive machine{HKEY_LOCAL_MACHINE};
    const ScratchFolder common;
    const ScratchFolder own;
};

// Sets the two folders as those of the Start menu; they need not exist.
void SetProgramFolders(const std::wstring& common, const std::wstring& own);

std::string ReadBytes(const std::wstring& file);

}  // namespace kvn::test
