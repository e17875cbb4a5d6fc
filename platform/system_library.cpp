#include "platform/system_library.h"

#include <array>
#include <string>

namespace kvn::platform {

void* FindSystemFunction(const wchar_t* library, const char* name) {
    std::array<wchar_t, MAX_PATH> folder{};
    const UINT length = GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    if (length == 0 || length >= folder.size()) return nullptr;
    const std::wstring path = std::wstring(folder.data(), length) + L'\\' + library;
    const HMODULE loaded = LoadLibraryW(path.c_str());
    return loaded == nullptr ? nullptr : reinterpret_cast<void*>(GetProcAddress(loaded, name));
}

}  // namespace kvn::platform
