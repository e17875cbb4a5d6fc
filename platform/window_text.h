// Texts of windows and controls.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::platform {

// The text, cut to this number of UTF-16 units but never in the middle of a surrogate pair.
[[nodiscard]] std::wstring CutText(std::wstring text, int maxLength);

// The window's text, cut as above; empty if there is no window.
[[nodiscard]] std::wstring WindowText(HWND window, int maxLength);

}  // namespace kvn::platform
