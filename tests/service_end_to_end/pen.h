// Draws strokes with the pointer, each step in time with the trail on the screen.
#pragma once

#include <windows.h>

#include <string>

#include "tests/service_end_to_end/hands.h"

namespace kvn::service_end_to_end {

class Pen {
public:
    // The hands are borrowed.
    explicit Pen(const Hands& userHands) : hands(userHands) {}

    void MoveTo(POINT place);
    // Call it when the trail is shown. Draws each letter (U, R, D, L) with enough steps to be recognised, and waits at
    // each step until the trail has reached it. A letter must not go back over an earlier one.
    void Draw(const std::string& letters);
    void WaitUntilTrailHasGone() const;

private:
    void Step(int x, int y);
    // Whether a trail, the page's or the service's, is to be seen there on the screen.
    bool IsTrailAt(POINT point) const;

    const Hands& hands;
    POINT place{};
    POINT lastOnTrail{};
};

}  // namespace kvn::service_end_to_end
