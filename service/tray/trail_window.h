// The path of the cursor while a stroke is drawn over other programs: it looks as on the page, and takes neither focus
// nor clicks.
#pragma once

#include <windows.h>

#include "platform/stroke_trail.h"
#include "platform/unique_resource.h"

namespace kvn::service {

class TrailWindow {
public:
    TrailWindow() = default;
    TrailWindow(const TrailWindow&) = delete;
    TrailWindow& operator=(const TrailWindow&) = delete;
    ~TrailWindow() = default;

    // In screen coordinates. If the window cannot be created, only the trail is missing.
    void Begin(POINT place);
    void MoveTo(POINT place);
    void End();

private:
    static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    bool Create();
    void Paint(HDC context) const;
    POINT InWindow(POINT place) const { return {place.x - origin.x, place.y - origin.y}; }

    platform::Owned<HWND, &DestroyWindow> window;
    platform::StrokeTrail trail;
    POINT origin{};
};

}  // namespace kvn::service
