#include "model/setting_field.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace kvn::model {
namespace {

struct ExpectedField {
    SettingField field;
    std::string fileElement;
    std::wstring registryName;
    std::int32_t minimum;
    std::int32_t maximum;
    std::int32_t defaultValue;
    unsigned labelId;
};

const std::vector<ExpectedField>& ExpectedFields() {
    using enum SettingField;
    static const std::vector<ExpectedField> fields{
        {Left, "lbutton", L"BindKeyLeft", 0, 54, 1, 203},
        {Right, "rbutton", L"BindKeyRight", 0, 54, 2, 204},
        {Center, "tbutton", L"BindKeyCenter", 0, 54, 9, 205},
        {Button4, "button4", L"BindKeyMinus", 0, 54, 3, 206},
        {Button5, "button5", L"BindKeyPlus", 0, 54, 4, 207},
        {HorizontalScrollSpeed, "scrolls", L"HolizonScroll", 1, 8, 4, 208},
        {TiltLeft, "tiltleft", L"BindKeyTiltLeft", 0, 54, 33, 213},
        {TiltRight, "tiltright", L"BindKeyTiltRight", 0, 54, 34, 214},
        {FlyingScrollSpeed, "hspeed", L"BindKeyHSpeed", 0, 54, 5, 215},
        {FlyingRevolutionSpeed, "hlotate", L"BindKeyHLotate", 0, 54, 5, 216},
        {FlyingRevolutionCount, "hcount", L"BindKeyHCount", 0, 54, 2, 217},
    };
    return fields;
}

TEST(SettingFieldsTest, HaveTheirNamesRangesAndDefaultsInOrder) {
    ASSERT_EQ(kSettingFields.size(), ExpectedFields().size());
    for (std::size_t index = 0; index < kSettingFields.size(); ++index) {
        const SettingFieldRow& row = kSettingFields[index];
        const ExpectedField& expected = ExpectedFields()[index];
        SCOPED_TRACE(expected.fileElement);
        EXPECT_EQ(row.field, expected.field);
        EXPECT_EQ(static_cast<std::size_t>(row.field), index);
        EXPECT_EQ(row.fileElement, expected.fileElement);
        EXPECT_EQ(RowOf(row.registryValue).name, expected.registryName);
        EXPECT_EQ(RowOf(row.registryValue).type, RegistryType::Dword);
        EXPECT_EQ(row.minimum, expected.minimum);
        EXPECT_EQ(row.maximum, expected.maximum);
        EXPECT_EQ(row.defaultValue, expected.defaultValue);
        EXPECT_EQ(row.labelId, expected.labelId);
        EXPECT_EQ(row.mayBeUnset, expected.fileElement == "hcount");
    }
}

TEST(SettingFieldsTest, AreFoundByTheirField) {
    for (const ExpectedField& expected : ExpectedFields()) {
        EXPECT_EQ(RowOf(expected.field).fileElement, expected.fileElement);
    }
}

TEST(ButtonSlotsTest, HaveTheirFieldsAndCompanionsInOrder) {
    struct ExpectedSlot {
        ButtonSlot slot;
        SettingField field;
        std::string fileElement;
        std::wstring registryName;
    };
    const std::vector<ExpectedSlot> slots{
        {ButtonSlot::Left, SettingField::Left, "lbutton_etcKey", L"BindKeyLeft_etcKey"},
        {ButtonSlot::Right, SettingField::Right, "rbutton_etcKey", L"BindKeyRight_etcKey"},
        {ButtonSlot::Center, SettingField::Center, "tbutton_etcKey", L"BindKeyCenter_etcKey"},
        {ButtonSlot::Button4, SettingField::Button4, "button4_etcKey", L"BindKeyMinus_etcKey"},
        {ButtonSlot::Button5, SettingField::Button5, "button5_etcKey", L"BindKeyPlus_etcKey"},
        {ButtonSlot::TiltLeft, SettingField::TiltLeft, "tiltleft_etcKey", L"BindKeyTiltLeft_etcKey"},
        {ButtonSlot::TiltRight, SettingField::TiltRight, "tiltright_etcKey", L"BindKeyTiltRight_etcKey"},
    };
    ASSERT_EQ(kButtonSlots.size(), slots.size());
    for (std::size_t index = 0; index < slots.size(); ++index) {
        SCOPED_TRACE(slots[index].fileElement);
        EXPECT_EQ(static_cast<std::size_t>(slots[index].slot), index);
        const ButtonSlotRow& row = RowOf(slots[index].slot);
        EXPECT_EQ(row.slot, slots[index].slot);
        EXPECT_EQ(row.field, slots[index].field);
        EXPECT_EQ(row.etcKeyElement, slots[index].fileElement);
        EXPECT_EQ(RowOf(row.etcKeyValue).name, slots[index].registryName);
        EXPECT_EQ(RowOf(row.etcKeyValue).type, RegistryType::String);
    }
}

TEST(CheckedSettingTest, KeepsTheEndsOfTheRangeAndRefusesWhatIsBeyond) {
    for (const ExpectedField& expected : ExpectedFields()) {
        SCOPED_TRACE(expected.fileElement);
        const auto check = [&expected](std::int32_t value) { return CheckedSetting(expected.field, value); };
        EXPECT_EQ(check(expected.minimum), expected.minimum);
        EXPECT_EQ(check(expected.maximum), expected.maximum);
        EXPECT_EQ(check(expected.defaultValue), expected.defaultValue);
        EXPECT_EQ(check(expected.minimum - 1), kAbnormalValue);
        EXPECT_EQ(check(expected.maximum + 1), kAbnormalValue);
        EXPECT_EQ(check(kAbnormalValue), kAbnormalValue);
        EXPECT_EQ(check(-3), kAbnormalValue);
        EXPECT_EQ(check(std::numeric_limits<std::int32_t>::min()), kAbnormalValue);
        EXPECT_EQ(check(std::numeric_limits<std::int32_t>::max()), kAbnormalValue);
    }
}

TEST(CheckedSettingTest, OnlyTheNumberOfRevolutionsMayBeUnset) {
    for (const ExpectedField& expected : ExpectedFields()) {
        const bool isCount = expected.field == SettingField::FlyingRevolutionCount;
        EXPECT_EQ(CheckedSetting(expected.field, -2), isCount ? -2 : -1) << expected.fileElement;
    }
}

TEST(CheckedSettingTest, FlyingScrollTakesTheRangeOfACodeAndNotOfItsSlider) {
    EXPECT_EQ(CheckedSetting(SettingField::FlyingScrollSpeed, 0), 0);
    EXPECT_EQ(CheckedSetting(SettingField::FlyingRevolutionSpeed, 11), 11);
    EXPECT_EQ(CheckedSetting(SettingField::FlyingRevolutionCount, 54), 54);
}

TEST(CheckedSettingsTest, ChecksEachByItsOwnRange) {
    SettingValues values;
    values.items.fill(9);
    SettingValues expected = values;
    expected[SettingField::HorizontalScrollSpeed] = -1;
    EXPECT_EQ(CheckedSettings(values), expected);

    values.items.fill(-2);
    expected.items.fill(-1);
    expected[SettingField::FlyingRevolutionCount] = -2;
    EXPECT_EQ(CheckedSettings(values), expected);
}

}  // namespace
}  // namespace kvn::model
