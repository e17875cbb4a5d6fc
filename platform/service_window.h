// Messages to the resident service. The service's window is looked up anew before each one; without it nothing is sent.
#pragma once

#include <windows.h>

#include <span>

#include "platform/service_protocol.h"

namespace kvn::platform {

// The service's window, or null.
HWND FindService();

// Whether the service runs and says that it is available. Waits for its answer.
bool IsServiceAvailable();

// Tells the service that the settings have been written. Does not wait.
void NotifySettingsChanged();

}  // namespace kvn::platform
