// Windows of another process: finding and clicking them.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "tests/support/window_messages.h"
#include "tests/support/window_search.h"

namespace kvn::end_to_end {

using test::ClassOf;
using test::Describe;
using test::Send;
using test::TextOf;
using test::TitleOf;

// Null if the process has no such top-level window. `isWanted` must not throw.
HWND FindTopLevel(DWORD processId, const std::function<bool(HWND)>& isWanted);

// The window that has the keyboard focus of this window's thread, or null.
HWND FocusOf(HWND window);

RECT ScreenRectangle(HWND window);
void Click(HWND window);

POINT MiddleOf(const RECT& area);

}  // namespace kvn::end_to_end
