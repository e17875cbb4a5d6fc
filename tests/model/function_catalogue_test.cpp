#include "model/function_catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace kvn::model {
namespace {

constexpr OsVersion kWindows7{6, 1};
constexpr OsVersion kWindows8{6, 2};
constexpr std::array kOtherVersions{OsVersion{5, 0}, OsVersion{5, 1},  OsVersion{5, 2}, OsVersion{6, 0},
                                    OsVersion{6, 1}, OsVersion{6, 3},  OsVersion{7, 2}, OsVersion{2, 6},
                                    OsVersion{5, 6}, OsVersion{10, 0}, OsVersion{10, 2}};

using TextAndCode = std::pair<unsigned, FunctionCode>;

std::vector<TextAndCode> AsPairs(const auto& rows) {
    std::vector<TextAndCode> pairs;
    for (const CatalogueRow& row : rows) pairs.emplace_back(row.textId, row.code);
    return pairs;
}

// Rows 2 to 35: the functions that every version of Windows except 6.2 and 5.x offers, up to the gesture function.
std::vector<TextAndCode> PlainFunctions() {
    return {{400, 1},  {401, 2},  {402, 3},  {403, 4},  {404, 5},  {405, 6},  {406, 7},  {407, 8},  {408, 9},
            {409, 10}, {410, 11}, {411, 12}, {412, 13}, {413, 14}, {414, 15}, {415, 16}, {416, 17}, {417, 18},
            {418, 19}, {419, 20}, {420, 21}, {421, 22}, {422, 23}, {423, 24}, {424, 25}, {425, 26}, {426, 27},
            {427, 28}, {428, 29}, {429, 30}, {430, 31}, {431, 32}, {433, 33}, {434, 34}};
}

std::vector<TextAndCode> CharmFunctions() {
    return {{147, 53}, {133, 39}, {134, 40}, {135, 41}, {136, 42}, {137, 43},
            {138, 44}, {139, 45}, {141, 47}, {142, 48}, {145, 51}, {148, 54}};
}

std::vector<TextAndCode> Joined(std::vector<TextAndCode> first, const std::vector<TextAndCode>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

std::vector<TextAndCode> Without(std::vector<TextAndCode> functions, FunctionCode code) {
    std::erase_if(functions, [code](const TextAndCode& function) { return function.second == code; });
    return functions;
}

bool Offers(OsVersion os, bool slotIsOnMouse, FunctionCode code) {
    const auto offered = FunctionsForSlot(os, slotIsOnMouse);
    return std::any_of(offered.begin(), offered.end(), [code](const CatalogueRow& row) { return row.code == code; });
}

std::string VersionText(OsVersion os) {
    return std::to_string(os.major) + '.' + std::to_string(os.minor);
}

TEST(FunctionCatalogueTest, HasItsFiftyRowsInOrder) {
    const auto expected = Joined(Joined(Joined({{127, 0}}, PlainFunctions()), {{435, 36}, {436, 37}}),
                                 Joined(CharmFunctions(), {{212, 38}}));
    ASSERT_EQ(expected.size(), 50U);
    EXPECT_EQ(AsPairs(kFunctionCatalogue), expected);
}

TEST(FunctionCatalogueTest, EveryCodeOfARowHasItsText) {
    for (const CatalogueRow& row : kFunctionCatalogue) EXPECT_EQ(TextIdOf(row.code), row.textId) << row.code;
    EXPECT_EQ(TextIdOf(0), 127U);
    EXPECT_EQ(TextIdOf(31), 430U);
    EXPECT_EQ(TextIdOf(38), 212U);
    EXPECT_EQ(TextIdOf(54), 148U);
}

TEST(FunctionCatalogueTest, ACodeWithoutARowHasNoText) {
    for (const FunctionCode code : {35, 46, 49, 50, 52, 55, kAbnormalValue, kUnsetValue}) {
        EXPECT_EQ(TextIdOf(code), std::nullopt) << code;
    }
}

TEST(FunctionCatalogueTest, TheTextsOfTheGapsAreInNoRow) {
    for (const CatalogueRow& row : kFunctionCatalogue) {
        for (const unsigned gap : {140U, 143U, 144U, 146U, 432U}) EXPECT_NE(row.textId, gap);
    }
}

TEST(FunctionCatalogueTest, CodesWithARoleHaveTheirNumbers) {
    EXPECT_EQ(kMaxFunctionCode, 54);
    EXPECT_EQ(kAbnormalValue, -1);
    EXPECT_EQ(kUnsetValue, -2);
    EXPECT_EQ(kFunctionLeftClick, 1);
    EXPECT_EQ(kFunctionShift, 19);
    EXPECT_EQ(kFunctionGesture, 36);
    EXPECT_EQ(kFunctionArbitraryKey, 37);
    EXPECT_EQ(kFunctionOff, 38);
}

TEST(FunctionCatalogueTest, Windows7OffersThePlainFunctionsAndOffLast) {
    EXPECT_EQ(AsPairs(FunctionsForSlot(kWindows7, true)), Joined(PlainFunctions(), {{435, 36}, {436, 37}, {212, 38}}));
}

TEST(FunctionCatalogueTest, Windows8OffersCharmsAndNoFlip3D) {
    EXPECT_EQ(
        AsPairs(FunctionsForSlot(kWindows8, true)),
        Joined(Joined(Without(PlainFunctions(), 31), {{435, 36}, {436, 37}}), Joined(CharmFunctions(), {{212, 38}})));
}

TEST(FunctionCatalogueTest, NoOtherVersionThanWindows8OffersCodes39To54) {
    for (const OsVersion os : kOtherVersions) {
        for (FunctionCode code = 39; code <= 54; ++code) {
            EXPECT_FALSE(Offers(os, true, code)) << VersionText(os) << ' ' << code;
        }
        EXPECT_TRUE(Offers(os, true, 31)) << VersionText(os);
        EXPECT_TRUE(Offers(os, true, 38)) << VersionText(os);
    }
}

TEST(FunctionCatalogueTest, Windows5NamesFlip3DWindowsTabInItsPlace) {
    auto expected = Joined(PlainFunctions(), {{435, 36}, {436, 37}, {212, 38}});
    std::replace(expected.begin(), expected.end(), TextAndCode{430, 31}, TextAndCode{432, 31});
    for (const std::uint32_t minor : {0U, 1U, 2U, 6U}) {
        EXPECT_EQ(AsPairs(FunctionsForSlot({5, minor}, true)), expected) << minor;
    }
}

TEST(FunctionCatalogueTest, ASlotThatIsNotOnTheMouseOffersNeitherGestureNorShift) {
    for (const OsVersion os : {kWindows7, kWindows8, OsVersion{5, 1}, OsVersion{10, 0}}) {
        EXPECT_EQ(AsPairs(FunctionsForSlot(os, false)), Without(Without(AsPairs(FunctionsForSlot(os, true)), 36), 19));
        EXPECT_TRUE(Offers(os, true, 36)) << VersionText(os);
        EXPECT_TRUE(Offers(os, true, 19)) << VersionText(os);
    }
}

TEST(FunctionCatalogueTest, CodesWithoutARowAndTheBlankRowAreNeverOffered) {
    for (const OsVersion os : {kWindows7, kWindows8, OsVersion{5, 1}, OsVersion{10, 0}}) {
        for (const FunctionCode code : {0, 35, 46, 49, 50, 52}) {
            EXPECT_FALSE(Offers(os, true, code)) << VersionText(os) << ' ' << code;
            EXPECT_FALSE(Offers(os, false, code)) << VersionText(os) << ' ' << code;
        }
    }
}

TEST(FunctionCatalogueTest, AGestureOffersTheFunctionsOfASlotExceptGestureAndOff) {
    EXPECT_EQ(AsPairs(FunctionsForGesture(kWindows7)), Joined(PlainFunctions(), {{436, 37}}));
    EXPECT_EQ(AsPairs(FunctionsForGesture(kWindows8)),
              Joined(Joined(Without(PlainFunctions(), 31), {{436, 37}}), CharmFunctions()));
    for (const OsVersion os : kOtherVersions) {
        EXPECT_EQ(AsPairs(FunctionsForGesture(os)), Without(Without(AsPairs(FunctionsForSlot(os, true)), 36), 38))
            << VersionText(os);
    }
}

}  // namespace
}  // namespace kvn::model
