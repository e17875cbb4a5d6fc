// The path of this program. Starts it again, or a program next to it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "platform/unique_resource.h"

namespace kvn::service {

// The path of this program, and its folder, with a final backslash.
std::wstring ProgramPath();
std::wstring ProgramFolder();

struct StartedProcess {
    platform::UniqueKernelObject handle;  // empty if it could not be started
    std::uint32_t id = 0;
};

// The new process inherits nothing. `program` is a full path.
StartedProcess StartProcess(const std::wstring& program, const std::wstring& quotedArguments);

}  // namespace kvn::service
