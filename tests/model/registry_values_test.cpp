#include "model/registry_values.h"

#include <gtest/gtest.h>

#include <vector>

namespace kvn::model {
namespace {

// The types by their numbers in the Windows interface.
constexpr std::uint32_t kSz = 1;
constexpr std::uint32_t kDword = 4;
constexpr std::uint32_t kMultiSz = 7;

TEST(RegistryValuesTest, HaveTheirNamesAndTypesInOrder) {
    struct Row {
        std::wstring name;
        std::uint32_t type;
    };
    const std::vector<Row> rows{{L"VID", kDword},
                                {L"PID", kDword},
                                {L"MI", kDword},
                                {L"ProfileName", kSz},
                                {L"HasTilt", kDword},
                                {L"ButtonCount", kDword},
                                {L"BindKeyLeft", kDword},
                                {L"BindKeyRight", kDword},
                                {L"BindKeyCenter", kDword},
                                {L"BindKeyMinus", kDword},
                                {L"BindKeyPlus", kDword},
                                {L"HolizonScroll", kDword},
                                {L"MouseImage", kSz},
                                {L"BindKeyTiltLeft", kDword},
                                {L"BindKeyTiltRight", kDword},
                                {L"BindKeyHSpeed", kDword},
                                {L"BindKeyHLotate", kDword},
                                {L"BindKeyHCount", kDword},
                                {L"ProfileApp", kMultiSz},
                                {L"Gesture", kMultiSz},
                                {L"BindKeyLeft_etcKey", kSz},
                                {L"BindKeyRight_etcKey", kSz},
                                {L"BindKeyCenter_etcKey", kSz},
                                {L"BindKeyMinus_etcKey", kSz},
                                {L"BindKeyPlus_etcKey", kSz},
                                {L"BindKeyTiltLeft_etcKey", kSz},
                                {L"BindKeyTiltRight_etcKey", kSz},
                                {L"MouseFlag", kDword}};
    ASSERT_EQ(kRegistryValues.size(), rows.size());
    for (std::size_t index = 0; index < rows.size(); ++index) {
        EXPECT_EQ(kRegistryValues[index].name, rows[index].name) << index;
        EXPECT_EQ(static_cast<std::uint32_t>(kRegistryValues[index].type), rows[index].type) << index;
    }
}

TEST(RegistryValuesTest, AreNamedByTheirIndex) {
    EXPECT_EQ(RowOf(RegistryValue::Vid).name, std::wstring(L"VID"));
    EXPECT_EQ(RowOf(RegistryValue::HasTilt).name, std::wstring(L"HasTilt"));
    EXPECT_EQ(RowOf(RegistryValue::ButtonCount).name, std::wstring(L"ButtonCount"));
    EXPECT_EQ(RowOf(RegistryValue::MouseImage).name, std::wstring(L"MouseImage"));
    EXPECT_EQ(RowOf(RegistryValue::ProfileApp).name, std::wstring(L"ProfileApp"));
    EXPECT_EQ(RowOf(RegistryValue::Gesture).name, std::wstring(L"Gesture"));
    EXPECT_EQ(static_cast<std::size_t>(RegistryValue::MouseFlag), 27U);
}

TEST(RegistryKeysTest, HaveTheirNames) {
    EXPECT_EQ(std::wstring(kBaseKey), L"Software\\KORVEN\\MouseUtility");
    EXPECT_EQ(std::wstring(kDefaultBindKey), L"Software\\KORVEN\\MouseUtility\\DefaultBindKey");
    EXPECT_EQ(std::wstring(kDefaultCenterValue), L"DefaultBindKey_Center");
}

TEST(ModelNameTest, HasFourLowerCaseHexadecimalDigitsEach) {
    EXPECT_EQ(MouseModelName(0xABC, 0xA1), L"VID0abcPID00a1");
    EXPECT_EQ(MouseModelName(0, 0), L"VID0000PID0000");
    EXPECT_EQ(MouseModelName(0xFFFF, 0x1234), L"VIDffffPID1234");
}

TEST(ModelNameTest, GrowsWithLargerNumbers) {
    EXPECT_EQ(MouseModelName(0x12345, 0xFFFFFFFF), L"VID12345PIDffffffff");
}

TEST(ModelKeyTest, IsBelowTheBaseKey) {
    EXPECT_EQ(MouseModelKey(0xABC, 0xA1), L"Software\\KORVEN\\MouseUtility\\VID0abcPID00a1");
}

TEST(ModelKeyTest, IsTheBaseKeyWhenEitherIdIsZero) {
    EXPECT_EQ(MouseModelKey(0, 0xA1), L"Software\\KORVEN\\MouseUtility");
    EXPECT_EQ(MouseModelKey(0xABC, 0), L"Software\\KORVEN\\MouseUtility");
    EXPECT_EQ(MouseModelKey(0, 0), L"Software\\KORVEN\\MouseUtility");
}

}  // namespace
}  // namespace kvn::model
