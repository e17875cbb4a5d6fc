#include "model/registry_changes.h"

#include <gtest/gtest.h>

#include <ostream>

namespace kvn::model {

static void PrintTo(const RegistryWrite& write, std::ostream* out) {
    *out << static_cast<std::size_t>(write.value) << '=' << write.number << '/' << testing::PrintToString(write.text);
}

namespace {

using namespace std::string_literals;

constexpr EtcKey kCtrlAlt{{17, 18, kNoKey}};

ProfileSettings DefaultSettings() {
    return DefaultProfileRecord().settings;
}

// Settings in which every value is another than in DefaultSettings().
ProfileSettings AllDifferent() {
    ProfileSettings settings = DefaultSettings();
    for (std::int32_t& number : settings.values.items) ++number;
    for (std::size_t slot = 0; slot < kButtonSlotCount; ++slot) {
        settings.etcKeys.items[slot].codes[0] = static_cast<KeyCode>(L'A' + slot);
    }
    settings.applications = {{L"Editor", L"C:\\editor.exe"}};
    settings.gestures = {{L"UD", 37, L"note", kCtrlAlt}};
    return settings;
}

TEST(ChangedValuesTest, NothingChangedNothingWritten) {
    EXPECT_TRUE(ChangedValues(DefaultSettings(), DefaultSettings()).empty());
    EXPECT_TRUE(ChangedValues(AllDifferent(), AllDifferent()).empty());
}

TEST(AllValuesTest, AreWrittenInTheOrderOfChangedOnes) {
    const std::vector<RegistryWrite> all = AllValues(AllDifferent());
    EXPECT_EQ(all.size(), 20U);
    EXPECT_EQ(ChangedValues(DefaultSettings(), AllDifferent()), all);
}

TEST(ChangedValuesTest, AreWrittenInTheirOrder) {
    using enum RegistryValue;
    const std::vector<RegistryWrite> expected{
        {Left, 2, L""},
        {Right, 3, L""},
        {Center, 10, L""},
        {Button4, 4, L""},
        {Button5, 5, L""},
        {HorizontalScrollSpeed, 5, L""},
        {TiltLeft, 34, L""},
        {TiltRight, 35, L""},
        {LeftEtcKey, 0, L"A"},
        {RightEtcKey, 0, L"B"},
        {CenterEtcKey, 0, L"C"},
        {Button4EtcKey, 0, L"D"},
        {Button5EtcKey, 0, L"E"},
        {TiltLeftEtcKey, 0, L"F"},
        {TiltRightEtcKey, 0, L"G"},
        {FlyingScrollSpeed, 6, L""},
        {FlyingRevolutionSpeed, 6, L""},
        {FlyingRevolutionCount, 3, L""},
        {Gesture, 0, L"UD\t37\tnote\tCtrl+Alt\0\0"s},
        {ProfileApp, 0, L"Editor\tC:\\editor.exe\0\0"s},
    };
    EXPECT_EQ(ChangedValues(DefaultSettings(), AllDifferent()), expected);
}

TEST(ChangedValuesTest, AChangedNumberIsTheOnlyWrite) {
    for (const SettingFieldRow& row : kSettingFields) {
        ProfileSettings after = DefaultSettings();
        after[row.field] = 7;
        const std::vector<RegistryWrite> expected{{row.registryValue, 7, L""}};
        EXPECT_EQ(ChangedValues(DefaultSettings(), after), expected) << row.fileElement;
    }
}

TEST(ChangedValuesTest, AChangedKeyIsTheOnlyWrite) {
    for (const ButtonSlotRow& row : kButtonSlots) {
        ProfileSettings after = DefaultSettings();
        after.etcKeys[row.slot] = kCtrlAlt;
        const std::vector<RegistryWrite> expected{{row.etcKeyValue, 0, L"Ctrl+Alt"}};
        EXPECT_EQ(ChangedValues(DefaultSettings(), after), expected) << row.etcKeyElement;
    }
}

TEST(ChangedValuesTest, KeysThatAreTakenAwayGiveTheEmptyText) {
    ProfileSettings before = DefaultSettings();
    before.etcKeys[ButtonSlot::Center] = kCtrlAlt;
    const std::vector<RegistryWrite> expected{{RegistryValue::CenterEtcKey, 0, L""}};
    EXPECT_EQ(ChangedValues(before, DefaultSettings()), expected);
}

TEST(ChangedValuesTest, KeysWithTheSameTextAreNoChange) {
    ProfileSettings before = DefaultSettings();
    before.etcKeys[ButtonSlot::Left] = kCtrlAlt;
    ProfileSettings after = before;
    after.etcKeys[ButtonSlot::Left].codes = {17, kNoKey, 18};
    EXPECT_TRUE(ChangedValues(before, after).empty());
}

TEST(ChangedValuesTest, AnyPartOfAnEntryIsAChange) {
    const ProfileSettings before = AllDifferent();
    for (int part = 0; part < 6; ++part) {
        ProfileSettings after = before;
        GestureEntry& gesture = after.gestures[0];
        if (part == 0) gesture.stroke = L"U";
        if (part == 1) gesture.function = 1;
        if (part == 2) gesture.memo = L"";
        if (part == 3) gesture.etcKey.codes[2] = 65;
        if (part == 4) after.applications[0].name = L"";
        if (part == 5) after.applications[0].path = L"";
        const auto writes = ChangedValues(before, after);
        ASSERT_EQ(writes.size(), 1U) << part;
        EXPECT_EQ(writes[0].value, part < 4 ? RegistryValue::Gesture : RegistryValue::ProfileApp) << part;
    }
}

TEST(ChangedValuesTest, AnEmptiedListIsASingleZero) {
    const ProfileSettings before = AllDifferent();
    ProfileSettings after = before;
    after.gestures.clear();
    after.applications.clear();
    const std::vector<RegistryWrite> expected{{RegistryValue::Gesture, 0, L"\0"s},
                                              {RegistryValue::ProfileApp, 0, L"\0"s}};
    EXPECT_EQ(ChangedValues(before, after), expected);
}

TEST(AllNumbersTest, AreWrittenInTheOrderOfANewProfileChangedOrNot) {
    using enum RegistryValue;
    const std::vector<RegistryWrite> expected{
        {Left, 1, L""},
        {Right, 2, L""},
        {Center, 9, L""},
        {Button4, 3, L""},
        {Button5, 4, L""},
        {TiltLeft, 33, L""},
        {TiltRight, 34, L""},
        {HorizontalScrollSpeed, 4, L""},
        {FlyingScrollSpeed, 5, L""},
        {FlyingRevolutionSpeed, 5, L""},
        {FlyingRevolutionCount, 2, L""},
    };
    EXPECT_EQ(AllNumbers(DefaultSettings().values), expected);
}

TEST(ApplicationsToMultiStringTest, EndsEachEntryAndTheBlockWithAZero) {
    EXPECT_EQ(ApplicationsToMultiString({{L"Editor", L"C:\\e.exe"}, {L"", L""}, {L"\x30E1", L"D:\\m.exe"}}),
              L"Editor\tC:\\e.exe\0\t\0\x30E1\tD:\\m.exe\0\0"s);
}

TEST(GesturesToMultiStringTest, SeparatesFourFieldsByTabs) {
    EXPECT_EQ(GesturesToMultiString({{L"URDL", 36, L"my note", {}}, {L"L", -2, L"", {{162, 86, kNoKey}}}, {}}),
              L"URDL\t36\tmy note\t\0L\t-2\t\tLeft Ctrl+V\0\t0\t\t\0\0"s);
}

TEST(MultiStringsTest, ATabInsideOfATextSeparatesNothing) {
    EXPECT_EQ(ApplicationsToMultiString({{L"a\tb", L"\tC:\\e\t"}}), L"a b\t C:\\e \0\0"s);
    EXPECT_EQ(GesturesToMultiString({{L"U\tD", 1, L"x\t\ty", {}}}), L"U D\t1\tx  y\t\0\0"s);
}

TEST(MultiStringsTest, AZeroInsideOfATextEndsNoEntry) {
    EXPECT_EQ(ApplicationsToMultiString({{L"a\0b"s, L"\0c"s}}), L"a\t\0\0"s);
    EXPECT_EQ(GesturesToMultiString({{L"U\0D"s, 1, L"x\0y"s, {}}}), L"U\t1\tx\t\0\0"s);
}

TEST(MultiStringsTest, OfAnEmptyListAreASingleZero) {
    EXPECT_EQ(ApplicationsToMultiString({}), L"\0"s);
    EXPECT_EQ(GesturesToMultiString({}), L"\0"s);
}

}  // namespace
}  // namespace kvn::model
