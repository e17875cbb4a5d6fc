// The modal dialog "Select allocation program": programs from the Start menu, from a file, or of a window on the
// screen.
#pragma once

#include <windows.h>

#include <vector>

#include "model/profile.h"

namespace kvn::profiles {

// Runs the dialog above the owner and appends the chosen programs in their order. True when the user confirmed, even if
// nothing was chosen; false on Cancel, with nothing appended.
bool RunProgramSelection(HINSTANCE module, HWND owner, std::vector<model::ApplicationEntry>& chosen);

}  // namespace kvn::profiles
