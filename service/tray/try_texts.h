// The texts of "Try the buttons" for a press.
#pragma once

#include <string>

#include "service/input/press_feed.h"

namespace kvn::service {

// "Button 4", as the page labels it.
std::wstring ControlText(model::ButtonSlot control);

// The effect of the press: the function with the name that the page gives it, arbitrary keys with their names; at the
// end of a stroke, the gesture too.
std::wstring EffectText(const SeenPress& press);

// "notepad.exe"
std::wstring ProgramText(const std::wstring& path);

}  // namespace kvn::service
