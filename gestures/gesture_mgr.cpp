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
    // While the service is asked, messages that other threads send come in, and one of them may be a tick.
    if (isTicking) return false;
    const platform::RaisedFlag flag(isTicking);
    return TakeSample();
}

bool CGestureMgr::TakeSample() {
    if (!isActive) return false;
    if (!GetCursorPos(&cursor)) return false;  // another desktop has the screen
    // Asked after the cursor was read: the answer may take its time.
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
