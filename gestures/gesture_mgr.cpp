#include "gestures/gesture_mgr.h"

#include "platform/raised_flag.h"
#include "platform/service_messages.h"

namespace kvn::gestures {
namespace {

constexpr int kCancelKey = VK_RBUTTON;

}  // namespace

void CGestureMgr::SetCallback(GestureCallback noticeCallback, void* context) {
    callback = noticeCallback;
    callbackContext = context;
}

void CGestureMgr::Arm(platform::ServiceButton gestureButton) {
    button = gestureButton;
    if (isActive) return;
    stroke = {};
    isActive = true;
}

void CGestureMgr::Disarm() {
    isActive = false;
}

bool CGestureMgr::Tick() {
    // While this waits for the service's answer, Windows delivers messages sent by other threads. One may be a tick.
    if (isTicking) return false;
    const platform::RaisedFlag flag(isTicking);
    return TakeSample();
}

bool CGestureMgr::TakeSample() {
    if (!isActive) return false;
    if (!GetCursorPos(&cursor)) return false;  // another desktop is shown
    // Asked after the cursor is read, since the answer may take a while.
    const bool isHeld = platform::IsButtonHeld(button);
    const bool isCancelHeld = GetKeyState(kCancelKey) < 0;

    const bool wasTracking = IsTracking();
    const auto notice = stroke.Take({{cursor.x, cursor.y}, isHeld, isCancelHeld});
    if (notice) Notify(*notice);
    if (wasTracking && !IsTracking()) isActive = false;
    return wasTracking || IsTracking();
}

void CGestureMgr::Notify(model::GestureNotice notice) const {
    notice.context = callbackContext;
    if (callback != nullptr) callback(&notice);
}

}  // namespace kvn::gestures
