// The commands of a window's menu, for the window in front. They are posted, so a program that hangs does not block the
// service.
#pragma once

#include <string>

#include "service/engine/functions.h"

namespace kvn::service {

// CloseWindow, MaximizeWindow or MinimizeWindow; never for the desktop or the taskbar. Returns a description of the
// action, in English. Other actions do nothing.
std::wstring DoWindowCommand(Action action);

}  // namespace kvn::service
