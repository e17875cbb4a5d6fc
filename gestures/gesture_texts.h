// The texts of gestures in the list and in the editor.
#pragma once

#include <windows.h>

#include <string>

#include "model/profile.h"
#include "model/stroke_recogniser.h"

namespace kvn::gestures {

// The letters of the notice's directions.
std::wstring StrokeText(HINSTANCE module, const model::GestureNotice& notice);

// The action of a gesture: the keys alone for "Arbitrary key" with keys, else the function's name; empty for a function
// without a name.
std::wstring FunctionText(HINSTANCE module, const model::GestureEntry& gesture);

}  // namespace kvn::gestures
