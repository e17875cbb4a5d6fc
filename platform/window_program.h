// The program that a window belongs to.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::platform {

// The path of the program file of the window's process, cut to this number of UTF-16 units. Empty if there is no
// window, or its process cannot be opened or hides its modules.
[[nodiscard]] std::wstring ProgramOfWindow(HWND window, DWORD maxLength);

}  // namespace kvn::platform
