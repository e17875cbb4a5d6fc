// Texts of windows and controls, and the names of their classes.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::platform {

// The text, cut to this number of UTF-16 units but never in the middle of a surrogate pair.
[[nodiscard]] std::wstring CutText(std::wstring text, int maxLength);

// The window's text, cut as above; empty if there is no window.
[[nodiscard]] std::wstring WindowText(HWND window, int maxLength);

// The name of the window's class; empty without a window.
[[nodiscard]] std::wstring ClassNameOf(HWND window);

}  // namespace kvn::platform
