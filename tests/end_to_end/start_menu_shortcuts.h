// Shortcuts in the user's real Start menu, in a separate folder below the programs.
#pragma once

#include <string>

namespace kvn::end_to_end {

class StartMenuShortcuts {
public:
    // The folder must not exist yet.
    explicit StartMenuShortcuts(const std::wstring& folderName);
    ~StartMenuShortcuts();
    StartMenuShortcuts(const StartMenuShortcuts&) = delete;
    StartMenuShortcuts& operator=(const StartMenuShortcuts&) = delete;

    // A shortcut as the shell saves it. The target need not exist.
    void Add(const std::wstring& name, const std::wstring& target) const;

private:
    std::wstring folder;  // with its final backslash
};

}  // namespace kvn::end_to_end
