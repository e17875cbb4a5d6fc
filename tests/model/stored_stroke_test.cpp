#include "model/stored_stroke.h"

#include <gtest/gtest.h>

namespace kvn::test {
namespace {

using model::StrokeDirection;

struct LetterRow {
    StrokeDirection direction;
    wchar_t letter;
};

constexpr LetterRow kLetters[] = {{StrokeDirection::Up, L'U'},
                                  {StrokeDirection::Right, L'R'},
                                  {StrokeDirection::Down, L'D'},
                                  {StrokeDirection::Left, L'L'}};

TEST(StoredStrokeTest, EachDirectionHasItsLetter) {
    for (const LetterRow& row : kLetters) {
        EXPECT_EQ(model::StoredLetterOf(row.direction), row.letter);
        EXPECT_EQ(model::DirectionOfStoredLetter(row.letter), row.direction);
    }
}

TEST(StoredStrokeTest, NoDirectionHasNoLetter) {
    EXPECT_EQ(model::StoredLetterOf(StrokeDirection::None), std::nullopt);
    EXPECT_EQ(model::StoredLetterOf(static_cast<StrokeDirection>(5)), std::nullopt);
}

TEST(StoredStrokeTest, OtherCharactersAreNoDirection) {
    for (const wchar_t letter : {L'u', L'X', L'\0', L' '}) {
        EXPECT_EQ(model::DirectionOfStoredLetter(letter), StrokeDirection::None);
    }
}

}  // namespace
}  // namespace kvn::test
