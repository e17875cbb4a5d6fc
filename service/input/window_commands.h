// The commands of a window's menu, for the window in front. They are posted: a program that hangs keeps nobody waiting.
#pragma once

#include <string>

#include "service/engine/functions.h"

namespace kvn::service {

// CloseWindow, MaximizeWindow or MinimizeWindow; never for the desktop or the taskbar. The text says in English what
// was done. Other actions do nothing.
std::wstring DoWindowCommand(Action action);

}  // namespace kvn::service
