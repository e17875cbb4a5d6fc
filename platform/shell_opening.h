// Opening programs and files as a double click does.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::platform {

// Waits until it is open and shows no message of its own when it fails; may take seconds. The calling thread has to be
// in a COM apartment, and may end right after it. A program without a `folder` starts in the current one.
[[nodiscard]] bool ShellOpen(const std::wstring& path, const wchar_t* arguments = nullptr,
                             const wchar_t* folder = nullptr);

}  // namespace kvn::platform
