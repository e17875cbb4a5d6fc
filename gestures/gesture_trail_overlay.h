// The path of the cursor while a stroke is drawn: a green line on a window over the whole screen whose ground is
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

    // Shows the window, unless it is there already. It belongs to the owner and goes with it at the latest. When it
    // cannot be made, the trail is missing and nothing else.
    void Show(HINSTANCE module, HWND owner);
    void Destroy();

    // The line begins here, and goes on from where it ended. In screen coordinates.
    void StartAt(POINT cursor);
    void DrawTo(POINT cursor);

private:
    static INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static void Repaint(HWND window);

    HWND overlay = nullptr;
    platform::StrokeTrail trail;
};

}  // namespace kvn::gestures
