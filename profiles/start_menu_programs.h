// The programs of the Start menu.
#pragma once

#include <windows.h>

#include <vector>

#include "model/profile.h"

namespace kvn::profiles {

// Appends the program of every shortcut below the program folders of all users and of this user, named as its
// shortcut, and sorts the whole list by name, comparing code values. Only shortcuts to a ".exe", in small letters,
// count. A program with several shortcuts is listed for each. What cannot be read is left out in silence. The owner is
// for what Windows may have to ask the user.
void AppendStartMenuPrograms(HWND owner, std::vector<model::ApplicationEntry>& programs);

}  // namespace kvn::profiles
