// The programs of the Start menu.
#pragma once

#include <windows.h>

#include <vector>

#include "model/profile.h"

namespace kvn::profiles {

// Appends the program of every shortcut below the program folders of all users and of this user, named as its shortcut,
// and sorts the whole list by name, comparing code values. Only shortcuts to a ".exe", in lower case, are taken. A
// program with several shortcuts is listed for each. Shortcuts that cannot be read are skipped silently. The owner is
// the parent of any question that Windows asks.
void AppendStartMenuPrograms(HWND owner, std::vector<model::ApplicationEntry>& programs);

}  // namespace kvn::profiles
