// A file that a test keeps open, to block other programs.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

#include "platform/unique_resource.h"

namespace kvn::test {

// Opened for reading. While it is open, it cannot be replaced, and no access is allowed that is not shared.
inline platform::UniqueFile HoldFile(const std::wstring& path, DWORD sharing = 0) {
    platform::UniqueFile file(
        CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) throw std::runtime_error("the file cannot be held open");
    return file;
}

}  // namespace kvn::test
