#include "model/profile.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>

namespace kvn::model {
namespace {

using Numbers = std::array<std::int32_t, 11>;

constexpr Numbers kDefaults{1, 2, 9, 3, 4, 4, 33, 34, 5, 5, 2};

std::vector<std::byte> RecordBytes(const Numbers& numbers) {
    std::vector<std::byte> bytes(sizeof numbers);
    std::memcpy(bytes.data(), numbers.data(), sizeof numbers);
    return bytes;
}

ProfileSettings SettingsOf(const Numbers& numbers) {
    ProfileSettings settings;
    settings.values.items = numbers;
    return settings;
}

ProfileRecord RecordOf(const Numbers& numbers) {
    ProfileRecord record;
    record.settings = SettingsOf(numbers);
    return record;
}

TEST(DefaultProfileTest, HasTheDefaultsOfEveryField) {
    const ProfileRecord record = DefaultProfileRecord();
    EXPECT_EQ(record.settings.values.items, kDefaults);
    for (const EtcKey& keys : record.settings.etcKeys.items) EXPECT_EQ(keys.codes, (std::array{-2, -2, -2}));
    EXPECT_TRUE(record.settings.applications.empty());
    EXPECT_TRUE(record.settings.gestures.empty());
    EXPECT_EQ(record.name, L"");
    EXPECT_EQ(record.vid, 0);
    EXPECT_EQ(record.pid, 0);
    EXPECT_EQ(record.selectedIndex, 0);
}

TEST(DefaultProfileTest, TakesTheMachineWideFunctionForTheWheelButtonOnly) {
    Numbers expected = kDefaults;
    expected[2] = 36;
    EXPECT_EQ(DefaultProfileRecord(36).settings.values.items, expected);
}

TEST(ProfileSettingsTest, FindTheFunctionOfASlotAmongTheNumbers) {
    const ProfileSettings settings = SettingsOf({10, 11, 12, 13, 14, 5, 16, 17, 1, 1, 1});
    const std::array expected{10, 11, 12, 13, 14, 16, 17};
    for (std::size_t slot = 0; slot < kButtonSlotCount; ++slot) {
        EXPECT_EQ(settings.FunctionOf(static_cast<ButtonSlot>(slot)), expected[slot]);
    }
}

TEST(ProfileRecordTest, ACopyHasItsOwnLists) {
    ProfileRecord source = DefaultProfileRecord();
    source.settings.applications = {{L"Editor", L"C:\\e.exe"}};
    source.settings.gestures = {{L"UD", 36, L"memo", {}}};
    const ProfileRecord before = source;

    ProfileRecord copy = source;
    copy.settings.applications.clear();
    copy.settings.gestures[0].memo = L"other";
    EXPECT_EQ(source, before);
    EXPECT_NE(copy, source);
}

TEST(GestureEntryTest, AFreshOneIsEmpty) {
    const GestureEntry entry;
    EXPECT_EQ(entry.stroke, L"");
    EXPECT_EQ(entry.memo, L"");
    EXPECT_EQ(entry.etcKey.codes, (std::array{-2, -2, -2}));
}

TEST(GestureEntryTest, EqualsWhenStrokeFunctionMemoAndAllKeysDo) {
    const GestureEntry entry{L"UD", 37, L"memo", {{17, 18, 46}}};
    EXPECT_EQ(entry, (GestureEntry{L"UD", 37, L"memo", {{17, 18, 46}}}));
    EXPECT_NE(entry, (GestureEntry{L"U", 37, L"memo", {{17, 18, 46}}}));
    EXPECT_NE(entry, (GestureEntry{L"UD", 36, L"memo", {{17, 18, 46}}}));
    EXPECT_NE(entry, (GestureEntry{L"UD", 37, L"", {{17, 18, 46}}}));
    EXPECT_NE(entry, (GestureEntry{L"UD", 37, L"memo", {{16, 18, 46}}}));
    EXPECT_NE(entry, (GestureEntry{L"UD", 37, L"memo", {{17, 17, 46}}}));
    EXPECT_NE(entry, (GestureEntry{L"UD", 37, L"memo", {{17, 18, -2}}}));
}

TEST(CheckedCopyTest, ChecksTheNumbersAndKeepsTheRest) {
    ProfileSettings settings = SettingsOf({0, 54, 55, -1, -2, 9, 100, 3, -2, 54, -2});
    settings.etcKeys[ButtonSlot::Button5] = {{17, 999, -2}};
    settings.applications = {{L"Editor", L"C:\\e.exe"}};
    settings.gestures = {{L"UD", 999, L"memo", {}}};
    ProfileSettings expected = settings;
    expected.values.items = {0, 54, -1, -1, -1, -1, -1, 3, -1, 54, -2};
    EXPECT_EQ(CheckedCopy(settings), expected);
}

TEST(InitialValuesOfTest, AGoodRecordAreItsNumbers) {
    const Numbers numbers{36, 0, 54, 7, 8, 1, 9, 10, 0, 54, -2};
    EXPECT_EQ(InitialValuesOf(RecordOf(numbers)).items, numbers);
}

TEST(InitialValuesOfTest, ABadNumberIsTheDefaultOfItsField) {
    Numbers bad;
    bad.fill(-1);
    EXPECT_EQ(InitialValuesOf(RecordOf(bad)).items, kDefaults);
    bad.fill(-2);
    Numbers expected = kDefaults;
    expected[10] = -2;
    EXPECT_EQ(InitialValuesOf(RecordOf(bad)).items, expected);
    bad.fill(std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(InitialValuesOf(RecordOf(bad)).items, kDefaults);
}

TEST(InitialValuesFromRecordTest, TakesElevenNumbersInOrder) {
    const Numbers numbers{10, 11, 12, 13, 14, 5, 16, 17, 18, 19, 20};
    const auto values = InitialValuesFromRecord(RecordBytes(numbers));
    ASSERT_TRUE(values);
    EXPECT_EQ(values->items, numbers);
}

TEST(InitialValuesFromRecordTest, ABadNumberIsTheDefaultOfItsField) {
    const auto values = InitialValuesFromRecord(RecordBytes({-1, 55, 12, -2, 0, 0, 54, 1000, -2, 5, -2}));
    ASSERT_TRUE(values);
    EXPECT_EQ(values->items, (Numbers{1, 2, 12, 3, 0, 4, 54, 34, 5, 5, -2}));
}

TEST(InitialValuesFromRecordTest, RefusesAShorterRecord) {
    const auto bytes = RecordBytes(kDefaults);
    ASSERT_EQ(bytes.size(), 44U);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        // A block of its own, at whose end a sanitizer watches.
        const std::vector<std::byte> cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_FALSE(InitialValuesFromRecord(cut)) << length;
    }
}

TEST(InitialValuesFromRecordTest, CutsALongerOne) {
    auto bytes = RecordBytes(kDefaults);
    for (const std::size_t extra : {1U, 3U, 100'000U}) {
        bytes.resize(44 + extra, std::byte{0xEE});
        const auto values = InitialValuesFromRecord(bytes);
        ASSERT_TRUE(values);
        EXPECT_EQ(values->items, kDefaults);
    }
}

TEST(InitialValuesFromRecordTest, ReadsAnUnalignedRecord) {
    auto bytes = RecordBytes(kDefaults);
    bytes.insert(bytes.begin(), std::byte{0xEE});
    const auto values = InitialValuesFromRecord(std::span(bytes).subspan(1));
    ASSERT_TRUE(values);
    EXPECT_EQ(values->items, kDefaults);
}

TEST(RepairAbnormalValuesTest, NothingAbnormalNothingChanged) {
    ProfileSet profiles{RecordOf(kDefaults), RecordOf({0, 0, 0, 0, 0, 1, 0, 0, 0, 0, -2})};
    const ProfileSet before = profiles;
    EXPECT_TRUE(RepairAbnormalValues(profiles, before[0].settings.values).empty());
    EXPECT_EQ(profiles, before);
}

TEST(RepairAbnormalValuesTest, ReplacesByTheInitialValuesAndTellsWhereProfileByProfile) {
    ProfileSet profiles{RecordOf({1, 2, -1, 3, 4, 4, 33, 34, 5, 5, 2}), RecordOf(kDefaults),
                        RecordOf({99, 2, 9, 3, 4, 0, 33, 34, 5, 5, -3})};
    const SettingValues initial{{20, 21, 22, 23, 24, 5, 26, 27, 28, 29, -2}};
    const auto repaired = RepairAbnormalValues(profiles, initial);

    const std::vector<std::pair<std::size_t, SettingField>> expected{{0, SettingField::Center},
                                                                     {2, SettingField::Left},
                                                                     {2, SettingField::HorizontalScrollSpeed},
                                                                     {2, SettingField::FlyingRevolutionCount}};
    ASSERT_EQ(repaired.size(), expected.size());
    for (std::size_t index = 0; index < expected.size(); ++index) {
        EXPECT_EQ(repaired[index].profile, expected[index].first) << index;
        EXPECT_EQ(repaired[index].field, expected[index].second) << index;
    }
    EXPECT_EQ(profiles[0].settings.values.items, (Numbers{1, 2, 22, 3, 4, 4, 33, 34, 5, 5, 2}));
    EXPECT_EQ(profiles[1].settings.values.items, kDefaults);
    EXPECT_EQ(profiles[2].settings.values.items, (Numbers{20, 2, 9, 3, 4, 5, 33, 34, 5, 5, -2}));
}

}  // namespace
}  // namespace kvn::model
