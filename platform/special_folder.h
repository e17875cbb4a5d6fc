// Folders that the shell knows by number.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::platform {

// The path of the folder with this CSIDL number, without a final backslash; empty when the shell does not know it.
[[nodiscard]] std::wstring SpecialFolder(int folder, HWND owner = nullptr);

}  // namespace kvn::platform
