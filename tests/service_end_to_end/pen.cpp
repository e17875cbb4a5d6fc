#include "tests/service_end_to_end/pen.h"

#include <algorithm>
#include <array>

#include "tests/end_to_end/waiting.h"

namespace kvn::service_end_to_end {
namespace {

// Longer than what fixes a direction, in pixels; the third step of a letter goes past the turn.
constexpr int kStep = 60;
constexpr int kStepsOfLetter = 3;
constexpr char kTrailColour[] = "00ff00";

struct LetterRow {
    char letter;
    int x;
    int y;
};
constexpr std::array<LetterRow, 4> kLetters{{{'U', 0, -kStep}, {'R', kStep, 0}, {'D', 0, kStep}, {'L', -kStep, 0}}};

}  // namespace

void Pen::MoveTo(POINT newPlace) {
    place = newPlace;
    hands.MoveTo(place);
    end_to_end::WaitFor("the pointer", [this] {
        POINT now{};
        GetCursorPos(&now);
        return now.x == place.x && now.y == place.y;
    });
}

void Pen::Draw(const std::string& letters) {
    for (const char letter : letters) {
        const auto row = std::find_if(kLetters.begin(), kLetters.end(),
                                      [=](const LetterRow& each) { return each.letter == letter; });
        for (int step = 0; step < kStepsOfLetter; ++step) Step(row->x, row->y);
    }
}

void Pen::Step(int x, int y) {
    lastOnTrail = {place.x + x / 2, place.y + y / 2};
    MoveTo({place.x + x, place.y + y});
    end_to_end::WaitFor("the trail", [this] { return IsTrailAt(lastOnTrail); });
}

void Pen::WaitUntilTrailHasGone() const {
    end_to_end::WaitFor("the end of the trail", [this] { return !IsTrailAt(lastOnTrail); });
}

bool Pen::IsTrailAt(POINT point) const {
    const RECT around{point.x - 1, point.y - 1, point.x + 2, point.y + 2};
    return hands.Pixels(around).find(kTrailColour) != std::string::npos;
}

}  // namespace kvn::service_end_to_end
