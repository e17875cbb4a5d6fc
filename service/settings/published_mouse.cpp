#include "service/settings/published_mouse.h"

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstdint>

#include "model/registry_values.h"
#include "platform/unique_resource.h"

namespace kvn::service {
namespace {

using model::RegistryValue;

constexpr std::array kPublishedValues{RegistryValue::HasTilt,   RegistryValue::ButtonCount, RegistryValue::MouseImage,
                                      RegistryValue::MouseFlag, RegistryValue::Vid,         RegistryValue::Pid};

platform::UniqueRegistryKey OpenBaseKey() {
    platform::UniqueRegistryKey key;
    RegCreateKeyExW(HKEY_CURRENT_USER, model::kBaseKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE, nullptr,
                    key.Receive(), nullptr);
    return key;
}

bool Write(HKEY key, RegistryValue value, const void* data, std::size_t bytes) {
    const auto& row = model::RowOf(value);
    return RegSetValueExW(key, row.name, 0, static_cast<DWORD>(row.type), static_cast<const BYTE*>(data),
                          static_cast<DWORD>(bytes)) == ERROR_SUCCESS;
}

bool Write(HKEY key, RegistryValue value, std::uint32_t number) {
    return Write(key, value, &number, sizeof number);
}

// With its final zero, and no longer than the page reads it.
bool Write(HKEY key, RegistryValue value, const std::wstring& text) {
    const std::wstring readable = text.substr(0, model::kMaxMouseImageLength);
    return Write(key, value, readable.c_str(), (readable.size() + 1) * sizeof(wchar_t));
}

}  // namespace

bool PublishMouse(const model::DeviceRecord& mouse) {
    const platform::UniqueRegistryKey base = OpenBaseKey();
    if (!base) return false;
    const HKEY key = base.Get();
    for (const RegistryValue value : kPublishedValues) RegDeleteValueW(key, model::RowOf(value).name);
    return Write(key, RegistryValue::HasTilt, mouse.hasTilt) &&
           Write(key, RegistryValue::ButtonCount, static_cast<std::uint32_t>(mouse.buttonCount)) &&
           Write(key, RegistryValue::MouseImage, mouse.mouseImage) &&
           Write(key, RegistryValue::MouseFlag, mouse.mouseFlag) && Write(key, RegistryValue::Vid, mouse.vid) &&
           Write(key, RegistryValue::Pid, mouse.pid);
}

}  // namespace kvn::service
