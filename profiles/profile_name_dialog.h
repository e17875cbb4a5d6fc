// The modal dialog in which the user types a profile's name.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

namespace kvn::profiles {

// The purpose of the name. It decides the dialog's title and whether the dialog starts with the current name.
enum class ProfileNameMode : std::uint32_t { Add, Rename, Copy };

struct ProfileNameRequest {
    ProfileNameMode mode = ProfileNameMode::Add;
    std::wstring currentName;  // for Rename and Copy
};

// Runs the dialog above the owner. Returns the name on OK, cut to 254 characters; it may be empty. Nothing on Cancel.
[[nodiscard]] std::optional<std::wstring> RunProfileNameDialog(HINSTANCE module, HWND owner,
                                                               const ProfileNameRequest& request);

}  // namespace kvn::profiles
