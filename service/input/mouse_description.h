// Describes a mouse for publishing, from Raw Input's facts about it. Pure.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/device_record.h"

namespace kvn::service {

// Raw Input's description of a mouse.
struct MouseFacts {
    std::wstring deviceName;
    std::uint32_t buttons = 0;
    bool hasHorizontalWheel = false;
};

struct MouseIds {
    std::uint32_t vid = 0;
    std::uint32_t pid = 0;

    friend bool operator==(const MouseIds&, const MouseIds&) = default;
};

// The ids of the device name, in the forms of USB and Bluetooth; 0xFFFF:0xFFFF if it lacks one or one is 0.
MouseIds IdsOfDeviceName(std::wstring_view deviceName);

// The published description of a mouse. pressedButtons: bit n, the button of slot n was pressed on it.
model::DeviceRecord DescribeMouse(const MouseFacts& facts, std::uint32_t pressedButtons);

bool IsSameMouse(const model::DeviceRecord& left, const model::DeviceRecord& right);

}  // namespace kvn::service
