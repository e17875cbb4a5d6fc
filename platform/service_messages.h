// Messages to the resident service. Each call looks up the service's window; if there is none, nothing is sent.
#pragma once

#include <windows.h>

#include "platform/service_protocol.h"

namespace kvn::platform {

// The service's window, or null.
[[nodiscard]] HWND FindService();

// Whether the service runs and reports that it is available. Waits for its answer.
[[nodiscard]] bool IsServiceAvailable();

// The settings have been written. Does not wait.
void NotifySettingsChanged();

// The gesture editor opens; waits until the service has handled it. And: the editor has closed; does not wait.
void NotifyGestureEditBegin();
void NotifyGestureEditEnd();

// Whether the service sees the button held. Waits for its answer; false if there is no service.
[[nodiscard]] bool IsButtonHeld(ServiceButton button);

}  // namespace kvn::platform
