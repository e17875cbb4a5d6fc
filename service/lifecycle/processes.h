// Where this program lies, and starting it once more or a program beside it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "platform/unique_resource.h"

namespace kvn::service {

// The path of this program, and the folder in which it lies, with its final backslash.
std::wstring ProgramPath();
std::wstring ProgramFolder();

struct StartedProcess {
    platform::UniqueKernelObject handle;  // empty when it could not be started
    std::uint32_t id = 0;
};

// The new process inherits nothing. `program` is a full path.
StartedProcess StartProcess(const std::wstring& program, const std::wstring& quotedArguments);

}  // namespace kvn::service
