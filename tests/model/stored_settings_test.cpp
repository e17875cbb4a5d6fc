#include "model/stored_settings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/registry_changes.h"
#include "tests/model/printed_document.h"

namespace kvn::model {
namespace {

using namespace std::string_literals;

using Bytes = std::vector<std::uint8_t>;

Bytes BytesOf(const std::wstring& text) {
    Bytes bytes;
    for (const wchar_t character : text) {
        bytes.push_back(static_cast<std::uint8_t>(character & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(character >> 8 & 0xFF));
    }
    return bytes;
}

Bytes BytesOf(std::int32_t number) {
    const auto bits = static_cast<std::uint32_t>(number);
    return {static_cast<std::uint8_t>(bits), static_cast<std::uint8_t>(bits >> 8),
            static_cast<std::uint8_t>(bits >> 16), static_cast<std::uint8_t>(bits >> 24)};
}

Bytes BytesOf(const RegistryWrite& write) {
    return RowOf(write.value).type == RegistryType::Dword ? BytesOf(write.number) : BytesOf(write.text);
}

std::optional<std::int32_t> Number(RegistryValue value, SettingField field, const Bytes& bytes) {
    StoredBytes stored;
    stored[value] = bytes;
    return StoredSettingsFrom(stored, test::kArbitraryKeyText).values[field];
}

std::optional<std::int32_t> Left(const Bytes& bytes) {
    return Number(RegistryValue::Left, SettingField::Left, bytes);
}

std::optional<EtcKey> LeftKeys(const Bytes& bytes) {
    StoredBytes stored;
    stored[RegistryValue::LeftEtcKey] = bytes;
    return StoredSettingsFrom(stored, test::kArbitraryKeyText).etcKeys[ButtonSlot::Left];
}

ProfileSettings EverythingSet() {
    ProfileSettings settings = DefaultProfileRecord().settings;
    for (const SettingFieldRow& row : kSettingFields) settings[row.field] = row.maximum;
    settings[SettingField::FlyingRevolutionCount] = kUnsetValue;
    for (const ButtonSlotRow& row : kButtonSlots) {
        settings.etcKeys[row.slot].codes = {162, L'A' + static_cast<KeyCode>(row.slot), kNoKey};
    }
    settings.applications = {{L"Editor", L"C:\\editor.exe"}, {L"\x30E1", L"memo.exe"}};
    settings.gestures = {{L"URDL", 37, L"note", {{162, 86, kNoKey}}}, {L"L", kUnsetValue, L"", {}}};
    return settings;
}

TEST(StoredSettingsTest, WhatThePageWritesComesBack) {
    ProfileSettings nothing;
    for (std::int32_t& number : nothing.values.items) number = kAbnormalValue;
    StoredBytes bytes;
    for (const RegistryWrite& write : ChangedValues(nothing, EverythingSet())) bytes[write.value] = BytesOf(write);
    EXPECT_EQ(CompletedFrom(StoredSettingsFrom(bytes, test::kArbitraryKeyText), nothing), EverythingSet());
}

TEST(StoredSettingsTest, WhatIsMissingComesFromTheFallback) {
    EXPECT_EQ(CompletedFrom(StoredSettingsFrom({}, test::kArbitraryKeyText), EverythingSet()), EverythingSet());
}

TEST(StoredSettingsTest, AnEmptyListOrTextIsNotMissing) {
    StoredBytes bytes;
    bytes[RegistryValue::Gesture] = BytesOf(L"\0"s);
    bytes[RegistryValue::ProfileApp] = Bytes{};
    bytes[RegistryValue::LeftEtcKey] = Bytes{};
    const ProfileSettings settings = CompletedFrom(StoredSettingsFrom(bytes, test::kArbitraryKeyText), EverythingSet());
    EXPECT_TRUE(settings.gestures.empty());
    EXPECT_TRUE(settings.applications.empty());
    EXPECT_EQ(settings.etcKeys[ButtonSlot::Left], EtcKey{});
}

TEST(StoredSettingsTest, AShortNumberFillsTheLowBytes) {
    EXPECT_EQ(Left({7}), 7);
    EXPECT_EQ(Left({7, 0}), 7);
    EXPECT_EQ(Left({}), 0);
    EXPECT_EQ(Number(RegistryValue::FlyingRevolutionCount, SettingField::FlyingRevolutionCount, {1, 2, 3}), 0x030201);
}

TEST(StoredSettingsTest, ANumberOfMoreThanFourBytesIsMissing) {
    EXPECT_EQ(Left({7, 0, 0, 0, 0}), std::nullopt);
    EXPECT_EQ(Left(Bytes(100'000)), std::nullopt);
}

TEST(StoredSettingsTest, AFunctionOutOfItsRangeIsMissing) {
    EXPECT_EQ(Left(BytesOf(54)), 54);
    for (const std::int32_t number : {-2, -1, 55, 256}) EXPECT_EQ(Left(BytesOf(number)), std::nullopt) << number;
}

TEST(StoredSettingsTest, AHorizontalSpeedOutOfItsRangeIsMissing) {
    const auto speed = [](std::int32_t number) {
        return Number(RegistryValue::HorizontalScrollSpeed, SettingField::HorizontalScrollSpeed, BytesOf(number));
    };
    EXPECT_EQ(speed(1), 1);
    EXPECT_EQ(speed(8), 8);
    for (const std::int32_t number : {-1, 0, 9}) EXPECT_EQ(speed(number), std::nullopt) << number;
}

TEST(StoredSettingsTest, FlyingScrollIsTakenAsItStands) {
    for (const std::int32_t number : {-2, 0, 11, 99}) {
        EXPECT_EQ(Number(RegistryValue::FlyingScrollSpeed, SettingField::FlyingScrollSpeed, BytesOf(number)), number);
        EXPECT_EQ(Number(RegistryValue::FlyingRevolutionCount, SettingField::FlyingRevolutionCount, BytesOf(number)),
                  number);
    }
}

TEST(StoredSettingsTest, KeysEndAtAZeroOrWithTheValue) {
    const EtcKey expected{{162, L'V', kNoKey}};
    EXPECT_EQ(LeftKeys(BytesOf(L"Left Ctrl+V")), expected);
    EXPECT_EQ(LeftKeys(BytesOf(L"Left Ctrl+V\0"s)), expected);
    EXPECT_EQ(LeftKeys(BytesOf(L"Left Ctrl+V\0junk"s)), expected);
    EXPECT_EQ(LeftKeys(BytesOf(L"Arbitrary key[Left Ctrl+V]")), expected);
}

TEST(StoredSettingsTest, HalfACharacterAtTheEndIsLeftOut) {
    Bytes bytes = BytesOf(L"V");
    bytes.push_back('x');
    EXPECT_EQ(LeftKeys(bytes), (EtcKey{{L'V', kNoKey, kNoKey}}));
}

TEST(MultiStringTest, EndsAtAnEmptyEntryOrWithTheBlock) {
    const std::vector<ApplicationEntry> one{{L"a", L"b"}};
    EXPECT_EQ(ApplicationsFromMultiString(L"a\tb\0\0"s), one);
    EXPECT_EQ(ApplicationsFromMultiString(L"a\tb\0"s), one);
    EXPECT_EQ(ApplicationsFromMultiString(L"a\tb"s), one);
    EXPECT_EQ(ApplicationsFromMultiString(L"a\tb\0\0c\td\0\0"s), one);
    EXPECT_TRUE(ApplicationsFromMultiString(L"").empty());
}

TEST(MultiStringTest, AProgramOfOneFieldHasNoPath) {
    EXPECT_EQ(ApplicationsFromMultiString(L"name\0"s), (std::vector<ApplicationEntry>{{L"name", L""}}));
}

TEST(MultiStringTest, AGestureMayLackItsLastFields) {
    const auto gestures =
        GesturesFromMultiString(L"U\0D\t6\0L\t6\tnote\0R\t37\tnote\tLeft Ctrl+V\tmore\0\0"s, test::kArbitraryKeyText);
    const std::vector<GestureEntry> expected{{L"U", kAbnormalValue, L"", {}},
                                             {L"D", 6, L"", {}},
                                             {L"L", 6, L"note", {}},
                                             {L"R", 37, L"note", {{162, L'V', kNoKey}}}};
    EXPECT_EQ(gestures, expected);
}

TEST(MultiStringTest, AFunctionThatIsNoNumberIsAbnormal) {
    for (const std::wstring text : {L"", L"x", L"6x", L" 6", L"+6", L"99999999999", L"\x0666", L"0x6"}) {
        const auto gestures = GesturesFromMultiString(L"U\t" + text + L"\t\t\0"s, test::kArbitraryKeyText);
        EXPECT_EQ(gestures.at(0).function, kAbnormalValue) << testing::PrintToString(text);
    }
}

}  // namespace
}  // namespace kvn::model
