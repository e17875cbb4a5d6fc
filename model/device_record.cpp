#include "model/device_record.h"

#include <algorithm>

namespace kvn::model {
namespace {

// A text in the registry need not end with a zero. If it fills the buffer without one, its last character is cut.
std::wstring MouseImageOf(const PublishedDevice& published) {
    const auto begin = published.mouseImage.begin();
    return {begin, std::find(begin, begin + kMaxMouseImageLength, L'\0')};
}

}  // namespace

std::optional<DeviceRecord> DeviceFromPublished(const PublishedDevice& published) {
    const DeviceRecord device{.hasTilt = published.hasTilt,
                              .buttonCount = static_cast<std::int32_t>(published.buttonCount),
                              .vid = published.vid,
                              .pid = published.pid,
                              .mouseImage = MouseImageOf(published),
                              .mouseFlag = published.mouseFlag};
    if (!IsPlausible(device)) return std::nullopt;
    return device;
}

}  // namespace kvn::model
