#include "tests/service_double/double_mouse.h"

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstdint>

#include "model/registry_values.h"
#include "platform/unique_resource.h"
#include "tests/service_double/console_text.h"

namespace kvn::service_double {
namespace {

using model::RegistryValue;

constexpr std::array kPublishedValues{RegistryValue::Vid,         RegistryValue::Pid,        RegistryValue::HasTilt,
                                      RegistryValue::ButtonCount, RegistryValue::MouseImage, RegistryValue::MouseFlag};

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
    return Write(key, value, &number, sizeof(number));
}

bool Write(HKEY key, RegistryValue value, const std::wstring& text) {
    return Write(key, value, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
}

}  // namespace

bool PublishMouse(const model::DeviceRecord& mouse) {
    const platform::UniqueRegistryKey base = OpenBaseKey();
    const HKEY key = base.Get();
    return base && Write(key, RegistryValue::Vid, mouse.vid) && Write(key, RegistryValue::Pid, mouse.pid) &&
           Write(key, RegistryValue::HasTilt, mouse.hasTilt) &&
           Write(key, RegistryValue::ButtonCount, static_cast<std::uint32_t>(mouse.buttonCount)) &&
           Write(key, RegistryValue::MouseImage, mouse.mouseImage) &&
           Write(key, RegistryValue::MouseFlag, mouse.mouseFlag);
}

void RemovePublishedMouse() {
    const platform::UniqueRegistryKey base = OpenBaseKey();
    if (!base) return;
    for (const RegistryValue value : kPublishedValues) RegDeleteValueW(base.Get(), model::RowOf(value).name);
}

std::wstring Describe(const model::DeviceRecord& mouse) {
    return Format(L"VID=0x%04x PID=0x%04x HasTilt=%u ButtonCount=%d MouseFlag=%u MouseImage=", mouse.vid, mouse.pid,
                  mouse.hasTilt, mouse.buttonCount, mouse.mouseFlag) +
           mouse.mouseImage;
}

}  // namespace kvn::service_double
