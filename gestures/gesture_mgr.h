// Records a stroke: at every tick it reads the cursor, asks the service whether the gesture button is held, and reports
// the progress of the stroke to its owner.
#pragma once

#include <windows.h>

#include <cstdint>

#include "model/stroke_recogniser.h"
#include "platform/service_protocol.h"

namespace kvn::gestures {

// Called during a tick; the notice lives as long as the call. The result is not used: docs/kept-behaviour.md.
using GestureCallback = std::int32_t (*)(const model::GestureNotice* notice);

// Used on the thread of the page's windows only.
class CGestureMgr {
public:
    CGestureMgr() = default;
    CGestureMgr(const CGestureMgr&) = delete;
    CGestureMgr& operator=(const CGestureMgr&) = delete;

    // Sets the receiver of the notices; the callback may be null.
    void SetCallback(GestureCallback noticeCallback, void* context);

    // Waits for a stroke, which begins when the service reports this button held. If already armed, only changes the
    // button.
    void Arm(platform::ServiceButton gestureButton);
    void Disarm();
    // Armed, or in the middle of a stroke. Every finished or cancelled stroke disarms.
    [[nodiscard]] bool IsActive() const { return isActive; }
    // In the middle of a stroke.
    [[nodiscard]] bool IsTracking() const { return stroke.IsTracking(); }
    // Where the last tick saw the cursor, in screen coordinates.
    [[nodiscard]] POINT Cursor() const { return cursor; }

    // Call it every 100 ms. True if a stroke began, continued or ended.
    bool Tick();

private:
    bool TakeSample();
    void Notify(model::GestureNotice notice) const;

    bool isActive = false;
    bool isTicking = false;
    platform::ServiceButton button{};
    POINT cursor{};
    model::StrokeRecogniser stroke;
    GestureCallback callback = nullptr;
    void* callbackContext = nullptr;
};

}  // namespace kvn::gestures
