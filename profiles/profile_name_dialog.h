// The modal dialog in which the user types a profile's name.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace kvn::profiles {

// What the name is for. It decides the dialog's title and whether the dialog starts with the name of the request.
// Delete has a title but asks for nothing: on OK the name stays as it was.
enum class ProfileNameMode : std::uint32_t { Add, Rename, Delete, Copy };

struct ProfileNameRequest {
    std::wstring name;  // before: the current name, for Rename and Copy; afterwards: what the user typed
    ProfileNameMode mode = ProfileNameMode::Add;
};

// Runs the dialog above the owner. True when the user pressed OK: the name holds what was typed, which may be nothing,
// cut to 254 characters. False on Cancel, with the request untouched.
bool RunProfileNameDialog(HINSTANCE module, HWND owner, ProfileNameRequest& request);

}  // namespace kvn::profiles
