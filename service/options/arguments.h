// The arguments of a start, which Windows passes as a single text.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace kvn::service {

// The arguments of this start, without the program's own name.
std::vector<std::wstring> Arguments();
std::vector<std::wstring> SplitCommandLine(const std::wstring& commandLine);

// A single text from which Windows gets these arguments back.
std::wstring Quoted(std::span<const std::wstring> arguments);

// The full path of a file that was named relative to the current folder. A path that is too long for Windows gets the
// form without a limit.
std::wstring FullPath(const std::wstring& path);

}  // namespace kvn::service
