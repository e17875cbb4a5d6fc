#include "tests/service_end_to_end/pen.h"

#include "tests/end_to_end/story_waiting.h"
#include "tests/service_end_to_end/recorder_protocol.h"
#include "tests/support/stroke_steps.h"

namespace kvn::service_end_to_end {
namespace {

constexpr char kTrailColour[] = "00ff00";

DWORD TimeOfLastInput() {
    LASTINPUTINFO last{};
    last.cbSize = sizeof last;
    return GetLastInputInfo(&last) ? last.dwTime : 0;
}

// Whether the window below has seen the pointer there, if it is a recorder's. Of any other it is only known that some
// input has come since then.
bool HasSeen(HWND below, POINT place, DWORD inputBefore) {
    const auto seen = static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(GetPropW(below, kPointerProperty)));
    return seen == 0 ? TimeOfLastInput() != inputBefore : seen == static_cast<DWORD>(MAKELONG(place.x, place.y));
}

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
        const POINT move = test::StepOf(letter);
        for (int step = 0; step < test::kStepsOfLetter; ++step) Step(move.x, move.y);
    }
}

// Wine asks the display for the cursor if it has had no move for 100 ms. A move that a slow program hands over after
// that, or the report that the pointer is now over the trail, sets the cursor back for a moment, and the stroke gets a
// corner. So each move is awaited.
void Pen::Step(int x, int y) {
    const DWORD before = TimeOfLastInput();
    lastOnTrail = {place.x + x / 2, place.y + y / 2};
    MoveTo({place.x + x, place.y + y});
    const HWND below = WindowFromPoint(place);
    end_to_end::WaitFor("the move to arrive", [&] { return HasSeen(below, place, before); });
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
