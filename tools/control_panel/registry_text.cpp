#include "tools/control_panel/registry_text.h"

#include "platform/unique_resource.h"
#include "tools/control_panel/host_error.h"

namespace kvn::control_panel {
namespace {

// The longest name of a registry key, and its final zero.
constexpr DWORD kKeyNameSize = 256;

[[noreturn]] void RefuseWrite(const std::wstring& path, LSTATUS status) {
    throw HostError{L"The registry key " + path + L" cannot be changed: " +
                    DescribeError(static_cast<unsigned long>(status)) + L"."};
}

}  // namespace

std::optional<std::wstring> ReadRegistryText(HKEY root, const std::wstring& path, const wchar_t* valueName) {
    std::wstring text(MAX_PATH, L'\0');
    LSTATUS status = ERROR_SUCCESS;
    DWORD bytes = 0;
    do {
        bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        status = RegGetValueW(root, path.c_str(), valueName, RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
        if (status == ERROR_MORE_DATA) text.resize(text.size() * 2);
    } while (status == ERROR_MORE_DATA);
    if (status != ERROR_SUCCESS) return std::nullopt;
    text.resize(bytes / sizeof(wchar_t) - 1);  // RegGetValueW always ends a text with a zero
    return text;
}

void WriteRegistryText(HKEY root, const std::wstring& path, const wchar_t* valueName, const std::wstring& text) {
    const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    const LSTATUS status = RegSetKeyValueW(root, path.c_str(), valueName, REG_SZ, text.c_str(), bytes);
    if (status != ERROR_SUCCESS) RefuseWrite(path, status);
}

void DeleteRegistryTree(HKEY root, const std::wstring& path) {
    const LSTATUS status = RegDeleteTreeW(root, path.c_str());
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) RefuseWrite(path, status);
}

std::vector<std::wstring> RegistrySubkeys(HKEY root, const std::wstring& path) {
    platform::UniqueRegistryKey key;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, key.Receive()) != ERROR_SUCCESS) return {};

    std::vector<std::wstring> names;
    wchar_t name[kKeyNameSize];
    DWORD length = kKeyNameSize;
    for (DWORD index = 0;
         RegEnumKeyExW(key.Get(), index, name, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS; ++index) {
        names.emplace_back(name, length);
        length = kKeyNameSize;
    }
    return names;
}

}  // namespace kvn::control_panel
