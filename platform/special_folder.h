// Folders that the shell identifies by a number.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::platform {

// The path of the folder with this CSIDL number, without a final backslash; empty if the shell has no such folder.
[[nodiscard]] std::wstring SpecialFolder(int folder, HWND owner = nullptr);

}  // namespace kvn::platform
