#include "model/key_names.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace kvn::model {
namespace {

struct NamedKey {
    KeyCode code;
    std::wstring name;
};

std::vector<NamedKey> ListedKeys() {
    std::vector<NamedKey> keys{{0x00, L"Enter key"},
                               {0x08, L"BackSpace"},
                               {0x09, L"Tab"},
                               {0x0D, L"Enter"},
                               {0x10, L"Shift"},
                               {0x11, L"Ctrl"},
                               {0x12, L"Alt"},
                               {0x13, L"Pause"},
                               {0x14, L"CapsLock"},
                               {0x1B, L"Esc"},
                               {0x20, L"Space"},
                               {0x21, L"PageUp"},
                               {0x22, L"PageDown"},
                               {0x23, L"End"},
                               {0x24, L"Home"},
                               {0x25, L"Left"},
                               {0x26, L"Up"},
                               {0x27, L"Right"},
                               {0x28, L"Down"},
                               {0x2C, L"PrintScreen"},
                               {0x2D, L"Insert"},
                               {0x2E, L"Delete"},
                               {0x5B, L"Left Windows"},
                               {0x5C, L"Right Windows"},
                               {0x5D, L"Application key"}};
    for (KeyCode digit = 0; digit <= 9; ++digit) {
        keys.push_back({0x60 + digit, std::to_wstring(digit) + L"(Numerical pad)"});
    }
    const std::vector<NamedKey> rest{
        {0x6A, L"*(Numerical pad)"}, {0x6B, L"+(Numerical pad)"}, {0x6D, L"-(Numerical pad)"},
        {0x6E, L".(Numerical pad)"}, {0x6F, L"/(Numerical pad)"}, {0x90, L"NumLock"},
        {0x91, L"ScrollLock"},       {0xA0, L"Left Shift"},       {0xA1, L"Right Shift"},
        {0xA2, L"Left Ctrl"},        {0xA3, L"Right Ctrl"},       {0xA4, L"Left Alt"},
        {0xA5, L"Right Alt"}};
    keys.insert(keys.end(), rest.begin(), rest.end());
    return keys;
}

std::vector<NamedKey> UnlistedKeys() {
    std::vector<NamedKey> keys{
        {0x1C, L"Convert"}, {0x1D, L"No conversion"}, {0x19, L"Half-width/Full-width"}, {0x15, L"Katakana/Hiragana"}};
    for (wchar_t digit = L'0'; digit <= L'9'; ++digit) keys.push_back({digit, std::wstring(1, digit)});
    for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) keys.push_back({letter, std::wstring(1, letter)});
    for (KeyCode number = 1; number <= 12; ++number) keys.push_back({0x6F + number, L'F' + std::to_wstring(number)});
    const std::vector<NamedKey> signs{{0xBA, L";"}, {0xBB, L"="}, {0xBC, L","},        {0xBD, L"-"},  {0xBE, L"."},
                                      {0xBF, L"/"}, {0xC0, L"`"}, {0xDB, L"["},        {0xDC, L"\\"}, {0xDD, L"]"},
                                      {0xDE, L"'"}, {0xDF, L"_"}, {0xE2, L"BackSlash"}};
    keys.insert(keys.end(), signs.begin(), signs.end());
    return keys;
}

TEST(KeyNamesTest, TableHasItsRowsInOrder) {
    const auto listed = ListedKeys();
    const auto unlisted = UnlistedKeys();
    ASSERT_EQ(listed.size(), 48U);
    ASSERT_EQ(unlisted.size(), 65U);
    ASSERT_EQ(kKeyNameTable.size(), 113U);
    for (std::size_t row = 0; row < kKeyNameTable.size(); ++row) {
        const bool isListed = row < listed.size();
        const NamedKey& expected = isListed ? listed[row] : unlisted[row - listed.size()];
        EXPECT_EQ(kKeyNameTable[row].code, expected.code) << row;
        EXPECT_EQ(kKeyNameTable[row].name, expected.name) << row;
        EXPECT_EQ(kKeyNameTable[row].listed, isListed) << row;
    }
}

TEST(KeyNamesTest, CodesAndNamesAreUnique) {
    std::set<KeyCode> codes;
    std::set<std::wstring> names;
    for (const KeyNameRow& row : kKeyNameTable) {
        EXPECT_TRUE(codes.insert(row.code).second) << row.code;
        EXPECT_TRUE(names.insert(row.name).second) << row.code;
    }
}

TEST(KeyNamesTest, CodeAndNameLeadToEachOther) {
    for (const KeyNameRow& row : kKeyNameTable) {
        ASSERT_NE(KeyNameOf(row.code), nullptr) << row.code;
        EXPECT_EQ(KeyNameOf(row.code), std::wstring(row.name));
        EXPECT_EQ(KeyCodeOf(row.name), row.code);
    }
}

TEST(KeyNamesTest, CodeZeroIsThePromptAndNotTheKeyEnter) {
    EXPECT_EQ(KeyNameOf(0), std::wstring(L"Enter key"));
    EXPECT_EQ(KeyCodeOf(L"Enter key"), kPromptKey);
    EXPECT_EQ(KeyCodeOf(L"Enter"), 13);
}

TEST(KeyNamesTest, ACodeWithoutARowHasNoName) {
    for (const KeyCode code : {kNoKey, -1, 1, 2, 7, 108, 124, 255, 256, 0x7FFFFFFF}) {
        EXPECT_EQ(KeyNameOf(code), nullptr) << code;
    }
}

TEST(KeyNamesTest, OnlyTheWholeExactNameIsFound) {
    for (const wchar_t* name : {L"", L"ctrl", L"CTRL", L"Ctr", L"Ctrl ", L" Ctrl", L"Left", L"Left  Ctrl", L"a", L"F0",
                                L"F13", L"Left Ctrl+V"}) {
        EXPECT_EQ(KeyCodeOf(name), std::wstring_view(name) == L"Left" ? 37 : kNoKey) << name;
    }
    EXPECT_EQ(KeyCodeOf(std::wstring_view(L"Ctrl\0", 5)), kNoKey);
}

TEST(KeyNamesTest, TheUnsetMarkerIsMinusTwo) {
    EXPECT_EQ(kNoKey, -2);
}

TEST(KeyNamesTest, ShiftKeysAreTheOneWithoutSideAndTheTwoWith) {
    for (const KeyNameRow& row : kKeyNameTable) {
        EXPECT_EQ(IsShiftKey(row.code), row.code == 16 || row.code == 160 || row.code == 161) << row.code;
    }
    EXPECT_FALSE(IsShiftKey(kNoKey));
}

}  // namespace
}  // namespace kvn::model
