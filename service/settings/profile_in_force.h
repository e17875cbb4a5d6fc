// The profile in force, the reason for it, and the reports of its changes.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>

#include "service/engine/engine_settings.h"

namespace kvn::service {

enum class Why : std::uint8_t { Selected, Program, Forced };

struct ProfileInForce {
    EngineSettings settings;
    std::wstring name;
    Why why = Why::Selected;
};

enum class SettingsProblem : std::uint8_t { FileUnreadable, FileSetAside };

// Called on the hub's thread.
struct HubOutlets {
    std::function<void(const ProfileInForce&)> onProfile;  // another profile is in force, or it has other settings
    std::function<void(HWND)> onWindowInFront;             // another window, not one of the service
    // Called once for each problem until it is solved. The text is the path of the file, or the new path of a file that
    // was set aside.
    std::function<void(SettingsProblem, const std::wstring& path)> onProblem;
};

}  // namespace kvn::service
