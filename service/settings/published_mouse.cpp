#include "service/settings/published_mouse.h"

#include <windows.h>

#include <array>
#include <cstdint>

#include "model/published_values.h"

namespace kvn::service {
namespace {

using model::RegistryValue;
using model::WritePublished;

constexpr std::array kPublishedValues{RegistryValue::HasTilt,   RegistryValue::ButtonCount, RegistryValue::MouseImage,
                                      RegistryValue::MouseFlag, RegistryValue::Vid,         RegistryValue::Pid};

// Cut to the length that the page reads.
std::wstring Readable(const std::wstring& image) {
    return image.substr(0, model::kMaxMouseImageLength);
}

}  // namespace

bool PublishMouse(const model::DeviceRecord& mouse) {
    const platform::UniqueRegistryKey base = model::OpenPublishedKey();
    if (!base) return false;
    const HKEY key = base.Get();
    for (const RegistryValue value : kPublishedValues) RegDeleteValueW(key, model::RowOf(value).name);
    return WritePublished(key, RegistryValue::HasTilt, mouse.hasTilt) &&
           WritePublished(key, RegistryValue::ButtonCount, static_cast<std::uint32_t>(mouse.buttonCount)) &&
           WritePublished(key, RegistryValue::MouseImage, Readable(mouse.mouseImage)) &&
           WritePublished(key, RegistryValue::MouseFlag, mouse.mouseFlag) &&
           WritePublished(key, RegistryValue::Vid, mouse.vid) && WritePublished(key, RegistryValue::Pid, mouse.pid);
}

}  // namespace kvn::service
