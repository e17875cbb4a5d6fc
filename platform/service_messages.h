// Messages to the resident service. The service's window is looked up before each one; without it nothing is sent.
#pragma once

#include <windows.h>

#include "platform/service_protocol.h"

namespace kvn::platform {

// The service's window, or null.
[[nodiscard]] HWND FindService();

// Whether the service runs and says that it is available. Waits for its answer.
[[nodiscard]] bool IsServiceAvailable();

// The settings have been written. Does not wait.
void NotifySettingsChanged();

// The gesture editor opens; waits until the service knows. And: the editor has closed.
void NotifyGestureEditBegin();
void NotifyGestureEditEnd();

// Whether the service sees the button held. Waits for its answer; false without a service.
[[nodiscard]] bool IsButtonHeld(ServiceButton button);

}  // namespace kvn::platform
