#include "tests/service_double/double_mouse.h"

#include <windows.h>

#include <array>
#include <cstdint>

#include "model/published_values.h"
#include "tests/service_double/console_text.h"

namespace kvn::service_double {
namespace {

using model::RegistryValue;
using model::WritePublished;

constexpr std::array kPublishedValues{RegistryValue::Vid,         RegistryValue::Pid,        RegistryValue::HasTilt,
                                      RegistryValue::ButtonCount, RegistryValue::MouseImage, RegistryValue::MouseFlag};

}  // namespace

bool PublishMouse(const model::DeviceRecord& mouse) {
    const platform::UniqueRegistryKey base = model::OpenPublishedKey();
    const HKEY key = base.Get();
    return base && WritePublished(key, RegistryValue::Vid, mouse.vid) &&
           WritePublished(key, RegistryValue::Pid, mouse.pid) &&
           WritePublished(key, RegistryValue::HasTilt, mouse.hasTilt) &&
           WritePublished(key, RegistryValue::ButtonCount, static_cast<std::uint32_t>(mouse.buttonCount)) &&
           WritePublished(key, RegistryValue::MouseImage, mouse.mouseImage) &&
           WritePublished(key, RegistryValue::MouseFlag, mouse.mouseFlag);
}

void RemovePublishedMouse() {
    const platform::UniqueRegistryKey base = model::OpenPublishedKey();
    if (!base) return;
    for (const RegistryValue value : kPublishedValues) RegDeleteValueW(base.Get(), model::RowOf(value).name);
}

std::wstring Describe(const model::DeviceRecord& mouse) {
    return Format(L"VID=0x%04x PID=0x%04x HasTilt=%u ButtonCount=%d MouseFlag=%u MouseImage=", mouse.vid, mouse.pid,
                  mouse.hasTilt, mouse.buttonCount, mouse.mouseFlag) +
           mouse.mouseImage;
}

}  // namespace kvn::service_double
