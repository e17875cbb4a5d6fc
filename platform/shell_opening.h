// Opening programs and files as a double click does.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::platform {

// Waits until it is open, which may take seconds, and shows no message if it fails. The calling thread must be in a COM
// apartment, and may end right after the call. A program without a `folder` starts in the current one.
[[nodiscard]] bool ShellOpen(const std::wstring& path, const wchar_t* arguments = nullptr,
                             const wchar_t* folder = nullptr);

}  // namespace kvn::platform
