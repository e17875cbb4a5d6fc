// The menu of the tray icon.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kvn::service {

// The state shown by the icon and its menu.
struct TrayState {
    std::wstring mouse;    // empty: none
    std::wstring profile;  // the one in force
    std::wstring forcedProfile;
    std::vector<std::wstring> profiles;
    bool isPaused = false;
};

enum class TrayCommand : std::uint8_t { Settings = 1, Automatic, Pause, Try, Export, Import, Help, About, Exit };

// A command, or the profile with this name.
using TrayChoice = std::variant<TrayCommand, std::wstring>;

// Shows the menu at the cursor. Returns the chosen item; nothing if the user chose none.
std::optional<TrayChoice> ShowTrayMenu(HWND window, const TrayState& state);

// The name for a menu, with ampersands that do not mark an access key.
std::wstring MenuText(const std::wstring& name);

}  // namespace kvn::service
