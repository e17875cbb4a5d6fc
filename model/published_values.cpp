#include "model/published_values.h"

#include <cstddef>

namespace kvn::model {
namespace {

bool WriteBytes(HKEY key, RegistryValue value, const void* data, std::size_t bytes) {
    const auto& row = RowOf(value);
    return RegSetValueExW(key, row.name, 0, static_cast<DWORD>(row.type), static_cast<const BYTE*>(data),
                          static_cast<DWORD>(bytes)) == ERROR_SUCCESS;
}

}  // namespace

platform::UniqueRegistryKey OpenPublishedKey() {
    platform::UniqueRegistryKey key;
    RegCreateKeyExW(HKEY_CURRENT_USER, kBaseKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE, nullptr,
                    key.Receive(), nullptr);
    return key;
}

bool WritePublished(HKEY key, RegistryValue value, std::uint32_t number) {
    return WriteBytes(key, value, &number, sizeof number);
}

bool WritePublished(HKEY key, RegistryValue value, const std::wstring& text) {
    return WriteBytes(key, value, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
}

}  // namespace kvn::model
