#include "gestures/gesture_mgr.h"

#include <mutex>
#include <span>

#include "gestures/gesture_trail_overlay.h"
#include "platform/raised_flag.h"
#include "platform/service_window.h"

namespace kvn::gestures {
namespace {

constexpr int kCancelKey = VK_RBUTTON;

}  // namespace

CGestureMgr::CGestureMgr(GestureTrailOverlay& trailOverlay) : trail(trailOverlay) {}

void CGestureMgr::SetCallback(GestureCallback noticeCallback, void* context) {
    callback = noticeCallback;
    callbackContext = context;
}

void CGestureMgr::Arm(platform::ServiceButton button) {
    {
        const std::lock_guard guard(lock);
        pendingKeys.count = 1;
        pendingKeys.keys[0] = button;
        isPending = true;
    }
    if (isActive) return;
    stroke = {};
    isActive = true;
}

void CGestureMgr::Disarm() {
    isActive = false;
}

std::int32_t CGestureMgr::Tick() {
    // While the service is asked, messages that other threads send come in, and one of them may be a tick.
    if (isTicking) return 0;
    const platform::RaisedFlag flag(isTicking);
    return TakeSample();
}

std::int32_t CGestureMgr::TakeSample() {
    TakePendingKeys();
    if (!isActive || keys.count < 1) return 0;

    POINT cursor{};
    if (!GetCursorPos(&cursor)) return 0;  // another desktop has the screen
    // Asked after the cursor was read: the answer may take its time.
    const bool isHeld = platform::AreButtonsHeld(std::span(keys.keys).first(keys.count));
    const bool isCancelHeld = GetKeyState(kCancelKey) < 0;

    const bool wasTracking = stroke.IsTracking();
    if (wasTracking && isHeld && !isCancelHeld) trail.DrawTo(cursor);
    const auto notice = stroke.Take({{cursor.x, cursor.y}, isHeld, isCancelHeld});
    if (notice) Notify(*notice);
    if (!wasTracking && stroke.IsTracking()) trail.StartAt(cursor);
    if (wasTracking && !stroke.IsTracking()) isActive = false;
    return wasTracking || stroke.IsTracking() ? 1 : 0;
}

void CGestureMgr::TakePendingKeys() {
    const std::lock_guard guard(lock);
    if (!isPending) return;
    keys = pendingKeys;
    isPending = false;
}

void CGestureMgr::Notify(model::GestureNotice notice) const {
    notice.context = callbackContext;
    if (callback != nullptr) callback(&notice);
}

}  // namespace kvn::gestures
