#include "service/settings/settings_block.h"

#include <gtest/gtest.h>

#include <string>

namespace kvn::service {
namespace {

using model::ButtonSlot;
using model::SettingField;
using enum model::StrokeDirection;

constexpr std::uint32_t kNumber = 42;

model::DeviceRecord Mouse(std::uint32_t hasTilt = 0, std::int32_t buttonCount = 5, std::uint32_t flag = 0) {
    model::DeviceRecord mouse;
    mouse.hasTilt = hasTilt;
    mouse.buttonCount = buttonCount;
    mouse.mouseFlag = flag;
    return mouse;
}

model::ProfileSettings Defaults() {
    return model::DefaultProfileRecord().settings;
}

EngineSettings BlockOf(const model::ProfileSettings& settings, const model::DeviceRecord& mouse = Mouse()) {
    return SettingsBlock(settings, mouse, kNumber);
}

EngineSettings WithGestures(const std::vector<model::GestureEntry>& gestures) {
    model::ProfileSettings settings = Defaults();
    settings.gestures = gestures;
    return BlockOf(settings);
}

FlyingScroll Flying(std::int32_t flicks, std::int32_t revolutionSpeed, std::int32_t scrollSpeed,
                    const model::DeviceRecord& mouse = Mouse()) {
    model::ProfileSettings settings = Defaults();
    settings[SettingField::FlyingRevolutionCount] = flicks;
    settings[SettingField::FlyingRevolutionSpeed] = revolutionSpeed;
    settings[SettingField::FlyingScrollSpeed] = scrollSpeed;
    return BlockOf(settings, mouse).flying;
}

TEST(SettingsBlockTest, HasTheNumbersAndKeysOfTheProfile) {
    model::ProfileSettings settings = Defaults();
    for (std::size_t index = 0; index < model::kButtonSlotCount; ++index) {
        const auto slot = static_cast<ButtonSlot>(index);
        settings[RowOf(slot).field] = static_cast<std::int32_t>(10 + index);
        settings.etcKeys[slot].codes[0] = static_cast<model::KeyCode>(L'A' + index);
    }
    settings[SettingField::HorizontalScrollSpeed] = 7;
    const EngineSettings block = BlockOf(settings);
    EXPECT_EQ(block.profile, kNumber);
    EXPECT_EQ(block.horizontalSpeed, 7);
    EXPECT_EQ(block.keys, settings.etcKeys);
    for (std::size_t index = 0; index < model::kButtonSlotCount; ++index) {
        EXPECT_EQ(block.functions.items[index], static_cast<std::int32_t>(10 + index));
    }
}

TEST(SettingsBlockTest, CountsTheControlsOfTheMouse) {
    const auto count = [](std::uint32_t hasTilt, std::int32_t buttons) {
        return BlockOf(Defaults(), Mouse(hasTilt, buttons)).controlCount;
    };
    EXPECT_EQ(count(0, 3), 3);
    EXPECT_EQ(count(0, 5), 5);
    EXPECT_EQ(count(1, 7), 7);
    EXPECT_EQ(count(1, 5), 7);
    EXPECT_EQ(count(0, -1), 0);
    EXPECT_EQ(count(0, 7), 5);
    EXPECT_EQ(count(0, 99), 5);
}

TEST(SettingsBlockTest, FliesWithNumbersInTheirRanges) {
    EXPECT_EQ(Flying(1, 1, 10), (FlyingScroll{1, 1, 10}));
    EXPECT_EQ(Flying(5, 10, 1), (FlyingScroll{5, 10, 1}));
}

TEST(SettingsBlockTest, AnInvalidNumberOfRevolutionsTurnsFlyingOff) {
    for (const std::int32_t flicks : {-2, -1, 0, 6, 54}) EXPECT_EQ(Flying(flicks, 3, 3).flicks, 0) << flicks;
}

TEST(SettingsBlockTest, ASpeedOutOfItsRangeIsFive) {
    for (const std::int32_t speed : {-2, 0, 11, 54}) {
        EXPECT_EQ(Flying(2, speed, 3), (FlyingScroll{2, 5, 3})) << speed;
        EXPECT_EQ(Flying(2, 3, speed), (FlyingScroll{2, 3, 5})) << speed;
    }
}

TEST(SettingsBlockTest, AMouseWithoutFlyingScrollDoesNotFly) {
    EXPECT_EQ(Flying(2, 3, 3, Mouse(0, 5, 1)).flicks, 0);
    EXPECT_EQ(Flying(2, 3, 3, Mouse(0, 5, 2)).flicks, 2);
}

TEST(SettingsBlockTest, ReadsStrokesFromTheirLetters) {
    const EngineSettings block = WithGestures({{L"URDL", 37, L"note", {{162, 86, -2}}}, {L"L", 6, L"", {}}});
    ASSERT_EQ(block.gestureCount, 2U);
    EXPECT_EQ(block.gestures[0], (EngineGesture{{Up, Right, Down, Left}, 37, {{162, 86, -2}}}));
    EXPECT_EQ(block.gestures[1], (EngineGesture{{Left, None, None, None}, 6, {}}));
}

TEST(SettingsBlockTest, LeavesOutGesturesWithoutAStroke) {
    const EngineSettings block = WithGestures({{L"", 6, L"", {}},
                                               {L"URDLU", 6, L"", {}},
                                               {L"UX", 6, L"", {}},
                                               {L"u", 6, L"", {}},
                                               {std::wstring(L"U\0", 2), 6, L"", {}},
                                               {L"D", 7, L"", {}}});
    ASSERT_EQ(block.gestureCount, 1U);
    EXPECT_EQ(block.gestures[0].function, 7);
}

TEST(SettingsBlockTest, KeepsTheFirstHundredGestures) {
    std::vector<model::GestureEntry> gestures(250, {L"U", 6, L"", {}});
    gestures[0].stroke = L"?";
    gestures[100].function = 7;
    gestures[101].function = 8;
    const EngineSettings block = WithGestures(gestures);
    ASSERT_EQ(block.gestureCount, kMaxGestures);
    EXPECT_EQ(block.gestures[kMaxGestures - 1].function, 7);
}

}  // namespace
}  // namespace kvn::service
