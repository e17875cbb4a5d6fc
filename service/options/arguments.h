// The arguments of a start, as Windows hands them over in one text.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace kvn::service {

// The arguments of this start, without the program's own name.
std::vector<std::wstring> Arguments();
std::vector<std::wstring> SplitCommandLine(const std::wstring& commandLine);

// One text from which Windows makes these arguments again.
std::wstring Quoted(std::span<const std::wstring> arguments);

// The full path of a file that was named from the current folder. A path that is too long for Windows gets the form
// without a limit.
std::wstring FullPath(const std::wstring& path);

}  // namespace kvn::service
