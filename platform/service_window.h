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

// Tells the service that the gesture editor opens, and waits until it knows; and that the editor has closed.
void NotifyGestureEditBegin();
void NotifyGestureEditEnd();

// Whether the service sees every one of these buttons held. They are asked for in turn, and the first one that is not
// held ends the query. False without buttons or without a service.
bool AreButtonsHeld(std::span<const ServiceButton> buttons);

}  // namespace kvn::platform
