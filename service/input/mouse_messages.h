// Turns a report to a low-level hook into an event of the engine.
#pragma once

#include <windows.h>

#include <optional>

#include "service/engine/engine.h"

namespace kvn::service {

// Nothing for messages that are not from a mouse.
std::optional<MouseEvent> EventOf(WPARAM message, const MSLLHOOKSTRUCT& details);

}  // namespace kvn::service
