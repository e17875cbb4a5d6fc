// The attached mouse as the resident service publishes it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace kvn::model {

inline constexpr int kMaxButtonCount = 7;

// The picture's base name, in characters without the final zero.
inline constexpr std::size_t kMaxMouseImageLength = 255;

struct DeviceRecord {
    std::uint32_t hasTilt = 0;     // 0 or 1
    std::int32_t buttonCount = 0;  // 0 to kMaxButtonCount; each side of a tilt counts as a button
    std::uint32_t vid = 0;
    std::uint32_t pid = 0;
    std::wstring mouseImage;
    std::uint32_t mouseFlag = 0;

    bool HasTiltWheel() const { return hasTilt == 1; }
    // Bit 0 of the flags: the mouse has no flying scroll.
    bool LacksFlyingScroll() const { return (mouseFlag & 1U) != 0; }
};

// Whether the capabilities are in their ranges.
inline bool IsPlausible(const DeviceRecord& device) {
    return device.hasTilt <= 1 && device.buttonCount >= 0 && device.buttonCount <= kMaxButtonCount;
}

// The published values as they are in the registry. A short number fills its low bytes, a short text its first
// characters; the rest stays zero.
struct PublishedDevice {
    std::uint32_t hasTilt = 0;
    std::uint32_t buttonCount = 0;
    std::uint32_t vid = 0;
    std::uint32_t pid = 0;
    std::array<wchar_t, kMaxMouseImageLength + 1> mouseImage{};  // with or without a final zero
    std::uint32_t mouseFlag = 0;
};

// The published mouse; nothing if a capability is out of its range.
std::optional<DeviceRecord> DeviceFromPublished(const PublishedDevice& published);

}  // namespace kvn::model
