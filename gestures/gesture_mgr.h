// Records a stroke: at every tick it reads the cursor, asks the service whether the gesture button is held, and tells
// its owner how the stroke goes on.
#pragma once

#include <windows.h>

#include <array>
#include <cstdint>

#include "model/stroke_recogniser.h"
#include "platform/critical_section.h"
#include "platform/service_protocol.h"

namespace kvn::gestures {

class GestureTrailOverlay;

// Called during a tick; the notice lives as long as the call. The result is not used.
using GestureCallback = std::int32_t (*)(const model::GestureNotice* notice);

// Used on the thread of the page's windows only.
class CGestureMgr {
public:
    explicit CGestureMgr(GestureTrailOverlay& trailOverlay);
    virtual ~CGestureMgr() = default;
    CGestureMgr(const CGestureMgr&) = delete;
    CGestureMgr& operator=(const CGestureMgr&) = delete;

    // Who is told from now on; the callback may be null.
    void SetCallback(GestureCallback noticeCallback, void* context);

    // Waits for a stroke that begins when the service sees this button held. Armed already, it only takes the button
    // over at the next tick.
    void Arm(platform::ServiceButton button);
    void Disarm();
    // Armed, or in the middle of a stroke. Every finished or cancelled stroke disarms.
    bool IsActive() const { return isActive; }

    // To be called every 100 ms. 0 when it did nothing, else 1.
    std::int32_t Tick();

private:
    struct KeyList {
        std::uint32_t count = 0;
        std::array<platform::ServiceButton, 3> keys{};
    };

    std::int32_t TakeSample();
    void TakePendingKeys();
    void Notify(model::GestureNotice notice) const;

    bool isActive = false;
    bool isTicking = false;
    KeyList keys;  // the buttons that must all be held
    bool isPending = false;
    KeyList pendingKeys;  // handed in by Arm
    model::StrokeRecogniser stroke;
    GestureCallback callback = nullptr;
    void* callbackContext = nullptr;
    GestureTrailOverlay& trail;
    platform::CriticalSection lock;  // guards the hand-over of the pending keys, although one thread does both
};

}  // namespace kvn::gestures
