// The machine-wide function of the wheel button.
#include <gtest/gtest.h>

#include <array>

#include "model/registry_access.h"
#include "tests/model_windows/locked_key.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::model {
namespace {

class DefaultCenterBindingTest : public testing::Test {
protected:
    static void Set(DWORD type, const void* data, DWORD bytes) {
        ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, L"Software\\KORVEN\\MouseUtility\\DefaultBindKey",
                                  L"DefaultBindKey_Center", type, data, bytes),
                  ERROR_SUCCESS);
    }
    static void Set(std::int32_t code) { Set(REG_DWORD, &code, sizeof code); }

    static std::int32_t CenterOfNewRecord() { return NewProfileRecord().settings[SettingField::Center]; }

    static void ExpectIgnored() {
        EXPECT_EQ(ReadDefaultCenterBinding(), std::nullopt);
        EXPECT_EQ(NewProfileRecord(), DefaultProfileRecord());
        EXPECT_EQ(CenterOfNewRecord(), 9);
    }

private:
    kvn::test::SandboxedHive machine{HKEY_LOCAL_MACHINE};
};

TEST_F(DefaultCenterBindingTest, WithoutOneANewRecordHasNine) {
    ExpectIgnored();
}

TEST_F(DefaultCenterBindingTest, IsTheCenterOfANewRecordAndOfNoOtherSlot) {
    Set(36);
    EXPECT_EQ(ReadDefaultCenterBinding(), 36);
    EXPECT_EQ(NewProfileRecord(), DefaultProfileRecord(36));
}

TEST_F(DefaultCenterBindingTest, OfMinusTwoLeavesTheCenterAtNine) {
    Set(-2);
    EXPECT_EQ(ReadDefaultCenterBinding(), -2);
    EXPECT_EQ(CenterOfNewRecord(), 9);
}

TEST_F(DefaultCenterBindingTest, StoredAsATextIsIgnored) {
    Set(REG_SZ, L"3", 4);
    ExpectIgnored();
}

TEST_F(DefaultCenterBindingTest, OfAnyOtherTypeIsIgnored) {
    const std::int32_t code = 36;
    for (const DWORD type : {REG_NONE, REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD_BIG_ENDIAN, REG_MULTI_SZ}) {
        Set(type, &code, sizeof code);
        ExpectIgnored();
    }
}

TEST_F(DefaultCenterBindingTest, OfAnyOtherSizeIsIgnored) {
    const std::array<BYTE, 4096> bytes{36};
    for (const DWORD size : {0U, 1U, 2U, 3U, 5U, 8U, 4096U}) {
        Set(REG_DWORD, bytes.data(), size);
        ExpectIgnored();
    }
}

TEST_F(DefaultCenterBindingTest, NeedsOnlyTheRightToRead) {
    Set(36);
    const test::LockedKey locked(HKEY_LOCAL_MACHINE, kDefaultBindKey, test::kReadingAllowed);
    EXPECT_EQ(CenterOfNewRecord(), 36);
}

TEST_F(DefaultCenterBindingTest, ThatMayNotBeReadIsIgnored) {
    Set(36);
    const test::LockedKey locked(HKEY_LOCAL_MACHINE, kDefaultBindKey, test::kNothingAllowed);
    ExpectIgnored();
}

}  // namespace
}  // namespace kvn::model
