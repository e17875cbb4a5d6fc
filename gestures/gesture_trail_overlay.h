// The path of the cursor while a stroke is drawn: a green line on a window over the whole screen whose background is
// transparent.
#pragma once

#include <windows.h>

#include "platform/stroke_trail.h"

namespace kvn::gestures {

class GestureTrailOverlay {
public:
    GestureTrailOverlay() = default;
    ~GestureTrailOverlay();
    GestureTrailOverlay(const GestureTrailOverlay&) = delete;
    GestureTrailOverlay& operator=(const GestureTrailOverlay&) = delete;

    // Shows the window, unless it is shown already. The owner window owns it, and destroys it along with itself at the
    // latest. If it cannot be created, only the trail is missing.
    void Show(HINSTANCE module, HWND owner);
    void Destroy();

    // Begin the line here; extend it to here. In screen coordinates.
    void StartAt(POINT cursor);
    void DrawTo(POINT cursor);

private:
    static INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static void Repaint(HWND window);

    HWND overlay = nullptr;
    platform::StrokeTrail trail;
};

}  // namespace kvn::gestures
