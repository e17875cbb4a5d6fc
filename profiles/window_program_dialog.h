// The modal dialog "Register allocation program": proposes the program of a window on the screen.
#pragma once

#include <windows.h>

#include <optional>

#include "model/profile.h"

namespace kvn::profiles {

// Runs the dialog above the owner. Returns the program on OK: its file name, with the extension, and its path. Nothing
// on Cancel.
[[nodiscard]] std::optional<model::ApplicationEntry> RunWindowProgramDialog(HINSTANCE module, HWND owner);

}  // namespace kvn::profiles
