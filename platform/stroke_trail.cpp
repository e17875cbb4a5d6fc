#include "platform/stroke_trail.h"

#include <algorithm>
#include <span>

#include "platform/device_context.h"
#include "platform/unique_resource.h"

namespace kvn::platform {
namespace {

constexpr LONG kCornerDistance = 10;  // pixels; more than a column

}  // namespace

void StrokeTrail::StartAt(POINT point) {
    points[0] = point;
    count = 1;
}

bool StrokeTrail::ExtendTo(POINT point) {
    if (count == 0) {
        StartAt(point);
        return false;
    }
    const POINT& last = points[count - 1];
    if (point.x == last.x && point.y == last.y) return false;
    if (count == kCapacity) Thin();
    points[count++] = point;
    return true;
}

// The last point has an odd index, since the capacity is even. It is kept as the new end.
void StrokeTrail::Thin() {
    static_assert(kCapacity % 2 == 0);
    const POINT last = points[count - 1];
    for (std::size_t kept = 1; kept < kCapacity / 2; ++kept) points[kept] = points[2 * kept];
    count = kCapacity / 2;
    points[count++] = last;
}

void StrokeTrail::Draw(HDC context) const {
    if (count < 2) return;
    const UniquePen pen(CreatePen(PS_SOLID, kTrailWidth, kTrailColour));
    if (!pen) return;
    const SelectedObject selectedPen(context, pen.Get());
    Polyline(context, points.data(), static_cast<int>(count));
    DrawCornersOfGround(context);
}

// Wine 10 shows nothing new if everything drawn since its last update lies in one column of eight pixels, as with a
// line straight down. So two points in the background colour, which change nothing visible, are drawn outside the path.
void StrokeTrail::DrawCornersOfGround(HDC context) const {
    const std::span path(points.data(), count);
    const auto [left, right] = std::ranges::minmax(path, {}, &POINT::x);
    const auto [top, bottom] = std::ranges::minmax(path, {}, &POINT::y);
    SetPixelV(context, left.x - kCornerDistance, top.y - kCornerDistance, kTrailGround);
    SetPixelV(context, right.x + kCornerDistance, bottom.y + kCornerDistance, kTrailGround);
}

void EraseTrailGround(HDC context, const RECT& area) {
    const UniqueBrush brush(CreateSolidBrush(kTrailGround));
    if (!brush) return;
    const SelectedObject noPen(context, GetStockObject(NULL_PEN));
    const SelectedObject ground(context, brush.Get());
    // Without a pen, Rectangle leaves out the last column and row.
    Rectangle(context, area.left, area.top, area.right + 1, area.bottom + 1);
}

}  // namespace kvn::platform
