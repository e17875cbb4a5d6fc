// Uses a drop-down list of another process as a user does.
#pragma once

#include <windows.h>

namespace kvn::end_to_end {

// Opens the list with a click and clicks the entry with this data.
void ChooseByMouse(HWND combo, int data);
// The same, by the entry's index.
void ChooseEntryByMouse(HWND combo, int index);

}  // namespace kvn::end_to_end
