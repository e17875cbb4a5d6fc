// The modal dialog "Select allocation program": programs from the Start menu, from a file, or of a window on the
// screen.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "model/profile.h"

namespace kvn::profiles {

// Runs the dialog above the owner. Returns the selected programs in their order, maybe none, on OK; nothing on Cancel.
[[nodiscard]] std::optional<std::vector<model::ApplicationEntry>> RunProgramSelection(HINSTANCE module, HWND owner);

}  // namespace kvn::profiles
