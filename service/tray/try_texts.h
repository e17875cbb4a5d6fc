// The texts of "Try the buttons" for a press.
#pragma once

#include <string>

#include "service/input/press_feed.h"

namespace kvn::service {

// For example "Button 4", as on the page.
std::wstring ControlText(model::ButtonSlot control);

// The effect of the press: the name of the function as on the page, or the names of arbitrary keys; at the end of a
// stroke, the gesture too.
std::wstring EffectText(const SeenPress& press);

// For example "notepad.exe".
std::wstring ProgramText(const std::wstring& path);

}  // namespace kvn::service
