// Starting this program once more, and programs beside it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/unique_resource.h"

namespace kvn::service {

// The path of this program, and the folder in which it lies, with its final backslash.
std::wstring ProgramPath();
std::wstring ProgramFolder();

// Names are meant from the current folder. A path that is too long for Windows gets the form that has no limit.
std::wstring FullPath(const std::wstring& path);

// The arguments of this start, without the program's own name.
std::vector<std::wstring> Arguments();
std::vector<std::wstring> SplitCommandLine(const std::wstring& commandLine);

// One text from which Windows makes these arguments again.
std::wstring Quoted(std::span<const std::wstring> arguments);

struct StartedProcess {
    platform::UniqueKernelObject handle;  // empty when it could not be started
    std::uint32_t id = 0;
};

// The new process inherits nothing. `program` is a full path.
StartedProcess StartProcess(const std::wstring& program, const std::wstring& quotedArguments);

}  // namespace kvn::service
