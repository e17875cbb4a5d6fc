// Messages to the resident service. Each call looks up the service's window; if there is none, nothing is sent.
#pragma once

#include <windows.h>

#include "platform/service_protocol.h"

namespace kvn::platform {

// The service's window, or null.
[[nodiscard]] HWND FindService();

// Whether the service is running and reports that it is available. Waits for its answer.
[[nodiscard]] bool IsServiceAvailable();

// Reports that the settings have been written. Does not wait.
void NotifySettingsChanged();

// Report that the gesture editor is opening, and wait until the service has handled it; or that it has closed, without
// waiting.
void NotifyGestureEditBegin();
void NotifyGestureEditEnd();

// Whether the service reports the button as held. Waits for its answer; false if there is no service.
[[nodiscard]] bool IsButtonHeld(ServiceButton button);

}  // namespace kvn::platform
