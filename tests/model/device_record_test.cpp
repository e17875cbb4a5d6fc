#include "model/device_record.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace kvn::model {
namespace {

DeviceRecord Device(std::uint32_t hasTilt, std::int32_t buttonCount) {
    DeviceRecord device;
    device.hasTilt = hasTilt;
    device.buttonCount = buttonCount;
    return device;
}

TEST(DeviceRecordTest, WithCapabilitiesInTheirRangesIsPlausible) {
    for (std::int32_t buttons = 0; buttons <= 7; ++buttons) {
        EXPECT_TRUE(IsPlausible(Device(0, buttons))) << buttons;
        EXPECT_TRUE(IsPlausible(Device(1, buttons))) << buttons;
    }
}

TEST(DeviceRecordTest, WithTiltOtherThanZeroOrOneIsNotPlausible) {
    EXPECT_FALSE(IsPlausible(Device(2, 5)));
    EXPECT_FALSE(IsPlausible(Device(std::numeric_limits<std::uint32_t>::max(), 5)));
}

TEST(DeviceRecordTest, WithMoreThanSevenOrNegativeButtonsIsNotPlausible) {
    EXPECT_FALSE(IsPlausible(Device(1, 8)));
    EXPECT_FALSE(IsPlausible(Device(1, -1)));
    EXPECT_FALSE(IsPlausible(Device(1, std::numeric_limits<std::int32_t>::min())));
    EXPECT_FALSE(IsPlausible(Device(1, std::numeric_limits<std::int32_t>::max())));
}

TEST(DeviceRecordTest, HasATiltWheelOnlyWhenTiltIsOne) {
    EXPECT_TRUE(Device(1, 5).HasTiltWheel());
    EXPECT_FALSE(Device(0, 5).HasTiltWheel());
    EXPECT_FALSE(Device(2, 5).HasTiltWheel());
}

TEST(DeviceRecordTest, LacksFlyingScrollWhenBitZeroOfTheFlagsIsSet) {
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

PublishedDevice PublishedImage(const std::wstring& text) {
    PublishedDevice published;
    text.copy(published.mouseImage.data(), published.mouseImage.size());
    return published;
}

std::wstring ImageFrom(const std::wstring& text) {
    const auto device = DeviceFromPublished(PublishedImage(text));
    return device ? device->mouseImage : L"(none)";
}

TEST(DeviceFromPublishedTest, TakesEveryValueToItsPlace) {
    PublishedDevice published = PublishedImage(L"Tarsel");
    published.hasTilt = 1;
    published.buttonCount = 7;
    published.vid = 0x12345;
    published.pid = 0xFFFFFFFE;
    published.mouseFlag = 5;
    const auto device = DeviceFromPublished(published);
    ASSERT_TRUE(device);
    EXPECT_EQ(device->hasTilt, 1U);
    EXPECT_EQ(device->buttonCount, 7);
    EXPECT_EQ(device->vid, 0x12345U);
    EXPECT_EQ(device->pid, 0xFFFFFFFEU);
    EXPECT_EQ(device->mouseImage, L"Tarsel");
    EXPECT_EQ(device->mouseFlag, 5U);
}

TEST(DeviceFromPublishedTest, CapabilitiesOutOfTheirRangesGiveNone) {
    for (const std::uint32_t hasTilt : {2U, 0xFFFFFFFFU}) {
        PublishedDevice published;
        published.hasTilt = hasTilt;
        EXPECT_FALSE(DeviceFromPublished(published)) << hasTilt;
    }
    for (const std::uint32_t buttonCount : {8U, 0x80000000U, 0xFFFFFFFFU}) {
        PublishedDevice published;
        published.buttonCount = buttonCount;
        EXPECT_FALSE(DeviceFromPublished(published)) << buttonCount;
    }
    EXPECT_TRUE(DeviceFromPublished({}));
}

TEST(DeviceFromPublishedTest, AnImageNameEndsAtItsFirstZeroOrAfter255Characters) {
    using namespace std::string_literals;
    EXPECT_EQ(ImageFrom(L""), L"");
    EXPECT_EQ(ImageFrom(L"abc"), L"abc");
    EXPECT_EQ(ImageFrom(L"a\0b\0"s), L"a");
    EXPECT_EQ(ImageFrom(L"\0b"s), L"");
    for (const std::size_t length : {254U, 255U}) {
        EXPECT_EQ(ImageFrom(std::wstring(length, L'x')), std::wstring(length, L'x'));
    }
    EXPECT_EQ(ImageFrom(std::wstring(256, L'x')), std::wstring(255, L'x'));
    EXPECT_EQ(ImageFrom(std::wstring(255, L'x') + L'\0'), std::wstring(255, L'x'));
}

}  // namespace
}  // namespace kvn::model
