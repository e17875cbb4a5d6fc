// Texts of windows and controls.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::platform {

// The window's text, cut to so many UTF-16 units but never in the middle of a surrogate pair; empty without a window.
std::wstring WindowText(HWND window, int maxLength);

}  // namespace kvn::platform
