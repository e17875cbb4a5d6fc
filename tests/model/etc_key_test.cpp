#include "model/etc_key.h"
#include "tests/model/printed_document.h"

#include <gtest/gtest.h>

namespace kvn::model {
namespace {

constexpr KeyCode kCtrl = 17;
constexpr KeyCode kAlt = 18;
constexpr KeyCode kLeftCtrl = 162;
constexpr KeyCode kV = 86;

EtcKey Keys(KeyCode first = kNoKey, KeyCode second = kNoKey, KeyCode third = kNoKey) {
    return {{first, second, third}};
}

EtcKey FromText(std::wstring_view text) {
    return TextToEtcKey(text, test::kArbitraryKeyText);
}

TEST(EtcKeyTest, AFreshOneHasNoKeys) {
    EXPECT_EQ(EtcKey(), Keys(-2, -2, -2));
}

TEST(EtcKeyToTextTest, NoKeysGiveTheEmptyText) {
    EXPECT_EQ(EtcKeyToText(Keys()), L"");
}

TEST(EtcKeyToTextTest, NamesAreJoinedByPlus) {
    EXPECT_EQ(EtcKeyToText(Keys(kLeftCtrl, kV)), L"Left Ctrl+V");
    EXPECT_EQ(EtcKeyToText(Keys(kCtrl, kAlt, 46)), L"Ctrl+Alt+Delete");
    EXPECT_EQ(EtcKeyToText(Keys(112)), L"F1");
}

TEST(EtcKeyToTextTest, AGapGivesOnePlusOnly) {
    EXPECT_EQ(EtcKeyToText(Keys(kCtrl, kNoKey, kAlt)), L"Ctrl+Alt");
    EXPECT_EQ(EtcKeyToText(Keys(kNoKey, kNoKey, kAlt)), L"Alt");
}

TEST(EtcKeyToTextTest, ThePromptAndUnknownCodesAreLeftOut) {
    EXPECT_EQ(EtcKeyToText(Keys(0, kCtrl, 0)), L"Ctrl");
    EXPECT_EQ(EtcKeyToText(Keys(1, kCtrl, 255)), L"Ctrl");
    EXPECT_EQ(EtcKeyToText(Keys(-1, 0x7FFFFFFF, 0)), L"");
}

TEST(TextToEtcKeyTest, TheEmptyTextGivesNoKeys) {
    EXPECT_EQ(FromText(L""), Keys());
}

TEST(TextToEtcKeyTest, ReadsUpToThreeNames) {
    EXPECT_EQ(FromText(L"F1"), Keys(112));
    EXPECT_EQ(FromText(L"Left Ctrl+V"), Keys(kLeftCtrl, kV));
    EXPECT_EQ(FromText(L"Ctrl+Alt+Delete"), Keys(kCtrl, kAlt, 46));
    EXPECT_EQ(FromText(L"Ctrl+Alt+Delete+V"), Keys(kCtrl, kAlt, 46));
}

TEST(TextToEtcKeyTest, AnUnknownNameLeavesItsPlaceUnused) {
    const EtcKey keys = FromText(L"Ctrl+Hyper+Alt");
    EXPECT_EQ(keys, Keys(kCtrl, kNoKey, kAlt));
    EXPECT_EQ(EtcKeyToText(keys), L"Ctrl+Alt");
}

TEST(TextToEtcKeyTest, NamesAreCaseSensitiveAndWhole) {
    EXPECT_EQ(FromText(L"ctrl+Alt"), Keys(kNoKey, kAlt));
    EXPECT_EQ(FromText(L"Left  Ctrl"), Keys());
    EXPECT_EQ(FromText(L"LeftCtrl"), Keys());
}

TEST(TextToEtcKeyTest, BlanksAroundANameDoNotCount) {
    EXPECT_EQ(FromText(L" Ctrl "), Keys(kCtrl));
    EXPECT_EQ(FromText(L"Ctrl + Alt"), Keys(kCtrl, kAlt));
    EXPECT_EQ(FromText(L"\n\t\tLeft Ctrl+\r\n V\v\f\n"), Keys(kLeftCtrl, kV));
    EXPECT_EQ(FromText(L"\n    Arbitrary key[ Left Ctrl+V ]\n"), Keys(kLeftCtrl, kV));
    EXPECT_EQ(FromText(L"\n    [Left Ctrl]\n"), Keys(kLeftCtrl));
    EXPECT_EQ(FromText(L" + Ctrl"), Keys(kNoKey, kCtrl));
    EXPECT_EQ(FromText(L" \n "), Keys());
}

TEST(TextToEtcKeyTest, EmptyPiecesTakeAPlace) {
    EXPECT_EQ(FromText(L"+Ctrl"), Keys(kNoKey, kCtrl));
    EXPECT_EQ(FromText(L"Ctrl++Alt"), Keys(kCtrl, kNoKey, kAlt));
    EXPECT_EQ(FromText(L"Ctrl+"), Keys(kCtrl));
    EXPECT_EQ(FromText(L"+++"), Keys());
}

TEST(TextToEtcKeyTest, ReadsTheFormWithAHeading) {
    EXPECT_EQ(FromText(L"Arbitrary key[Left Ctrl+V]"), Keys(kLeftCtrl, kV));
    EXPECT_EQ(FromText(L"[Arbitrary key][[Left Ctrl+V"), Keys(kLeftCtrl, kV));
    EXPECT_EQ(FromText(L"My Arbitrary key here[V]"), Keys(kV));
}

TEST(TextToEtcKeyTest, AHeadingAloneGivesNoKeys) {
    EXPECT_EQ(FromText(L"Arbitrary key"), Keys());
    EXPECT_EQ(FromText(L"Arbitrary key[]"), Keys());
    EXPECT_EQ(FromText(L"[]"), Keys());
}

TEST(TextToEtcKeyTest, WithoutTheHeadingTheFirstTokenCounts) {
    EXPECT_EQ(FromText(L"[[V]Ctrl"), Keys(kV));
    EXPECT_EQ(FromText(L"V[Ctrl]"), Keys(kV));
    EXPECT_EQ(FromText(L"arbitrary key[V]"), Keys());
}

TEST(TextToEtcKeyTest, AfterTheHeadingOnlyTheNextTokenCounts) {
    EXPECT_EQ(FromText(L"Arbitrary key[V][Ctrl]"), Keys(kV));
    EXPECT_EQ(FromText(L"Arbitrary key[Arbitrary key][V]"), Keys());
}

TEST(TextToEtcKeyTest, AMissingHeadingTextIsNoHeading) {
    EXPECT_EQ(TextToEtcKey(L"V[Ctrl]", L""), Keys(kV));
}

TEST(TextToEtcKeyTest, ThePromptIsReadAsItsCode) {
    EXPECT_EQ(FromText(L"Enter key+V"), Keys(0, kV));
}

TEST(TextToEtcKeyTest, ReadsEveryKeyBackButThoseWhoseNamesSeparate) {
    for (const KeyNameRow& row : kKeyNameTable) {
        if (row.code == kPromptKey) continue;
        const bool separates = row.code == 107 || row.code == 219 || row.code == 221;
        const EtcKey keys = Keys(row.code, kAlt);
        EXPECT_EQ(EtcKeyToText(keys), std::wstring(row.name) + L"+Alt");
        EXPECT_EQ(FromText(EtcKeyToText(keys)) == keys, !separates) << row.code;
    }
}

TEST(ArbitraryKeyLabelTest, ShowsTheKeysInBrackets) {
    EXPECT_EQ(ArbitraryKeyLabel(test::kArbitraryKeyText, Keys(kLeftCtrl, kV)), L"Arbitrary key[Left Ctrl+V]");
    EXPECT_EQ(ArbitraryKeyLabel(test::kArbitraryKeyText, Keys()), L"Arbitrary key");
    EXPECT_EQ(ArbitraryKeyLabel(test::kArbitraryKeyText, Keys(0, 1, -1)), L"Arbitrary key");
}

TEST(ArbitraryKeyLabelTest, CanBeReadBack) {
    const EtcKey keys = Keys(kCtrl, kAlt, 46);
    EXPECT_EQ(FromText(ArbitraryKeyLabel(test::kArbitraryKeyText, keys)), keys);
}

TEST(WithoutShiftKeysTest, TakesEveryShiftKeyAway) {
    EXPECT_EQ(WithoutShiftKeys(Keys(16, 160, 161)), Keys());
    EXPECT_EQ(WithoutShiftKeys(Keys(kCtrl, 160, kV)), Keys(kCtrl, kNoKey, kV));
    EXPECT_EQ(WithoutShiftKeys(Keys(kCtrl, kAlt, kV)), Keys(kCtrl, kAlt, kV));
}

}  // namespace
}  // namespace kvn::model
