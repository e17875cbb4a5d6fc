// The settings in force, as the engine reads them: one plain block without pointers, copied whole.
#pragma once

#include <array>
#include <cstdint>

#include "model/etc_key.h"
#include "model/function_catalogue.h"
#include "model/setting_field.h"
#include "model/stroke_recogniser.h"

namespace kvn::service {

inline constexpr std::size_t kMaxGestures = 100;

struct EngineGesture {
    std::array<model::StrokeDirection, model::kMaxStrokeLength> stroke{};  // None after its last letter
    model::FunctionCode function = model::kFunctionNone;
    model::EtcKey keys;

    friend bool operator==(const EngineGesture&, const EngineGesture&) = default;
};

struct FlyingScroll {
    std::int32_t flicks = 0;           // N: 1 to 5; anything else: off
    std::int32_t revolutionSpeed = 5;  // R: 1 to 10
    std::int32_t scrollSpeed = 5;      // S: 1 to 10

    friend bool operator==(const FlyingScroll&, const FlyingScroll&) = default;
};

struct EngineSettings {
    // Identifies the profile: two blocks with the same number belong to the same profile.
    std::uint32_t profile = 0;
    // The mouse has this many controls, the first ones in the order of ButtonSlot.
    std::int32_t controlCount = 5;
    model::EnumArray<model::ButtonSlot, model::FunctionCode, model::kButtonSlotCount> functions{
        {1, 2, 9, 3, 4, 33, 34}};
    model::EnumArray<model::ButtonSlot, model::EtcKey, model::kButtonSlotCount> keys;
    std::int32_t horizontalSpeed = 4;  // 1 to 8
    FlyingScroll flying;
    std::uint32_t gestureCount = 0;
    std::array<EngineGesture, kMaxGestures> gestures{};

    friend bool operator==(const EngineSettings&, const EngineSettings&) = default;
};

}  // namespace kvn::service
