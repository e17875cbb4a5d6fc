// How the host gives up: a text for the user, and the program's exit code.
#pragma once

#include <string>

namespace kvn::control_panel {

inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 2;

struct HostError {
    std::wstring text;
    int exitCode = kExitFailure;
};

// Windows' message for a Win32 error code or a failed HRESULT, with the number: "File not found (0x2)".
std::wstring DescribeError(unsigned long error);

// Writes one line, as UTF-8, to the standard error stream.
void WriteErrorLine(const std::wstring& text);

}  // namespace kvn::control_panel
