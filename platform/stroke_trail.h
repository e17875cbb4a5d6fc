// The path of a stroke: a green line on a background that a layered window makes transparent. It keeps the points, so
// that the line can be drawn again after the background was erased.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>

namespace kvn::platform {

// The colour key: a colour that nothing else uses.
inline constexpr COLORREF kTrailGround = RGB(5, 0, 0);
inline constexpr COLORREF kTrailColour = RGB(0, 255, 0);
inline constexpr int kTrailWidth = 3;  // pixels

// Allocates no memory while it grows, and never fails.
class StrokeTrail {
public:
    // The largest number of points. When it is reached, every second point is dropped; both ends always stay.
    static constexpr std::size_t kCapacity = 1024;

    // Forgets the path.
    void Clear() { count = 0; }

    // The path begins here, in the client coordinates of the window that shows it; an earlier one is forgotten.
    void StartAt(POINT point);

    // Extends the path to this point. False if it ends there already: a line without length would leave a dot.
    [[nodiscard]] bool ExtendTo(POINT point);

    // Draws the whole path, however long, in a few calls. A path of one point draws nothing.
    void Draw(HDC context) const;

private:
    void DrawCornersOfGround(HDC context) const;
    void Thin();

    std::array<POINT, kCapacity> points{};
    std::size_t count = 0;
};

// Fills the area with the background colour.
void EraseTrailGround(HDC context, const RECT& area);

}  // namespace kvn::platform
