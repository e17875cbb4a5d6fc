// A file that a test keeps open in the way of others.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

#include "platform/unique_resource.h"

namespace kvn::test {

// Opened for reading; nobody else can replace it while it is open, nor do anything that is not shared.
inline platform::UniqueFile HoldFile(const std::wstring& path, DWORD sharing = 0) {
    platform::UniqueFile file(
        CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) throw std::runtime_error("the file to hold cannot be opened");
    return file;
}

}  // namespace kvn::test
