// The path of a stroke: a green line on a ground that a layered window makes transparent. The points are kept, so that
// the line can be drawn again whenever the ground has been erased.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>

namespace kvn::platform {

// The colour key: a colour that nobody draws with.
inline constexpr COLORREF kTrailGround = RGB(5, 0, 0);
inline constexpr COLORREF kTrailColour = RGB(0, 255, 0);
inline constexpr int kTrailWidth = 3;  // pixels

// Takes no memory of its own while it grows, and never fails.
class StrokeTrail {
public:
    // So many points are kept. When there are more, every second one is left out; both ends always stay.
    static constexpr std::size_t kCapacity = 1024;

    // Forgets the path.
    void Clear() { count = 0; }

    // The path begins here, in the client coordinates of the window that shows it; an earlier one is forgotten.
    void StartAt(POINT point);

    // The path goes on to this point. False when it is there already: a line without length would leave a dot.
    [[nodiscard]] bool ExtendTo(POINT point);

    // Draws the whole path, in one call however long it is. A path of one point leaves nothing.
    void Draw(HDC context) const;

private:
    void Thin();

    std::array<POINT, kCapacity> points{};
    std::size_t count = 0;
};

// Fills the area with the ground colour.
void EraseTrailGround(HDC context, const RECT& area);

}  // namespace kvn::platform
