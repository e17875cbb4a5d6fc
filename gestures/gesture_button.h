// The mouse button that carries the gesture function.
#pragma once

#include "model/setting_field.h"
#include "platform/service_protocol.h"

namespace kvn::gestures {

struct GestureButtonRow {
    model::ButtonSlot slot;
    platform::ServiceButton button;
    const wchar_t* debugText;  // for the debugger's output when a capture is armed
};

// Whether any control of the mouse, a tilt included, has the gesture function.
bool HasGestureFunction(const model::SettingValues& values);

// The first button with the gesture function; null if none has it. A tilt cannot be held and does not count.
const GestureButtonRow* FindGestureButton(const model::SettingValues& values);

}  // namespace kvn::gestures
