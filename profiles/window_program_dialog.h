// The modal dialog "Register allocation program": proposes the program of a window on the screen.
#pragma once

#include <windows.h>

#include "model/profile.h"

namespace kvn::profiles {

// Runs the dialog above the owner. True when the user confirmed; the entry then holds the program's file name, with its
// extension, and its path.
bool RunWindowProgramDialog(HINSTANCE module, HWND owner, model::ApplicationEntry& entry);

}  // namespace kvn::profiles
