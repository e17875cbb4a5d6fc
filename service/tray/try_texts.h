// What "Try the buttons" says of a press.
#pragma once

#include <string>

#include "service/input/press_feed.h"

namespace kvn::service {

// "Button 4", as the page labels it.
std::wstring ControlText(model::ButtonSlot control);

// What the press does: the function by the page's own name of it, arbitrary keys with their names; of a stroke's end
// the gesture too.
std::wstring EffectText(const SeenPress& press);

// "notepad.exe"
std::wstring ProgramText(const std::wstring& path);

}  // namespace kvn::service
