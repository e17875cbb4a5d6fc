// How tests draw a stroke: for each letter three steps of the cursor, each longer than the distance that fixes a
// direction. The third one goes past the turn.
#pragma once

#include <windows.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace kvn::test {

inline constexpr int kStrokeStep = 60;  // pixels
inline constexpr int kStepsOfLetter = 3;

// The cursor's move in one step of this letter.
inline POINT StepOf(char letter) {
    struct LetterRow {
        char letter;
        POINT step;
    };
    static constexpr std::array<LetterRow, 4> kLetters{
        {{'U', {0, -kStrokeStep}}, {'R', {kStrokeStep, 0}}, {'D', {0, kStrokeStep}}, {'L', {-kStrokeStep, 0}}}};
    const auto row = std::ranges::find(kLetters, letter, &LetterRow::letter);
    if (row == kLetters.end()) throw std::invalid_argument("no letter of a stroke");
    return row->step;
}

}  // namespace kvn::test
