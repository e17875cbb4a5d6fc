#include "model/device_record.h"

#include <gtest/gtest.h>

#include <limits>

namespace kvn::model {
namespace {

DeviceRecord Device(std::uint32_t hasTilt, std::int32_t buttonCount) {
    DeviceRecord device;
    device.hasTilt = hasTilt;
    device.buttonCount = buttonCount;
    return device;
}

TEST(DeviceRecord, WithCapabilitiesInTheirRangesIsPlausible) {
    for (std::int32_t buttons = 0; buttons <= 7; ++buttons) {
        EXPECT_TRUE(IsPlausible(Device(0, buttons))) << buttons;
        EXPECT_TRUE(IsPlausible(Device(1, buttons))) << buttons;
    }
}

TEST(DeviceRecord, WithTiltOtherThanZeroOrOneIsNotPlausible) {
    EXPECT_FALSE(IsPlausible(Device(2, 5)));
    EXPECT_FALSE(IsPlausible(Device(std::numeric_limits<std::uint32_t>::max(), 5)));
}

TEST(DeviceRecord, WithMoreThanSevenOrNegativeButtonsIsNotPlausible) {
    EXPECT_FALSE(IsPlausible(Device(1, 8)));
    EXPECT_FALSE(IsPlausible(Device(1, -1)));
    EXPECT_FALSE(IsPlausible(Device(1, std::numeric_limits<std::int32_t>::min())));
    EXPECT_FALSE(IsPlausible(Device(1, std::numeric_limits<std::int32_t>::max())));
}

TEST(DeviceRecord, HasATiltWheelOnlyWhenTiltIsOne) {
    EXPECT_TRUE(Device(1, 5).HasTiltWheel());
    EXPECT_FALSE(Device(0, 5).HasTiltWheel());
    EXPECT_FALSE(Device(2, 5).HasTiltWheel());
}

TEST(DeviceRecord, LacksFlyingScrollWhenBitZeroOfTheFlagsIsSet) {
    DeviceRecord device;
    for (const std::uint32_t flags : {0U, 2U, 0xFFFFFFFEU}) {
        device.mouseFlag = flags;
        EXPECT_FALSE(device.LacksFlyingScroll()) << flags;
    }
    for (const std::uint32_t flags : {1U, 3U, 0xFFFFFFFFU}) {
        device.mouseFlag = flags;
        EXPECT_TRUE(device.LacksFlyingScroll()) << flags;
    }
}

}  // namespace
}  // namespace kvn::model
