// Files of a test: their bytes, and the other files in their folder.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/unique_resource.h"

namespace kvn::model::test {

inline void WriteBytes(const std::wstring& path, const std::string& bytes) {
    const platform::UniqueFile file(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    if (!file || !WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) {
        throw std::runtime_error("a test's file cannot be written");
    }
}

inline std::string ReadBytes(const std::wstring& path) {
    const platform::UniqueFile file(CreateFileW(path.c_str(), GENERIC_READ,
                                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) throw std::runtime_error("a test's file cannot be read");
    std::string bytes(GetFileSize(file.Get(), nullptr), '\0');
    DWORD read = 0;
    ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    return bytes;
}

// The names of everything in a folder, in alphabetical order.
inline std::vector<std::wstring> NamesIn(const std::wstring& folder) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found{};
    const platform::UniqueFileSearch search(FindFirstFileW((folder + L"\\*").c_str(), &found));
    if (!search) return names;
    do {
        const std::wstring name = found.cFileName;
        if (name != L"." && name != L"..") names.push_back(name);
    } while (FindNextFileW(search.Get(), &found));
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace kvn::model::test
