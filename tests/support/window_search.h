// Finds windows and reads their content.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/support/window_names.h"

namespace kvn::test {

// As the window itself says.
std::wstring TextOf(HWND window);

// The first top-level window of this process that meets the condition, or null.
HWND FindTopLevelWindow(const std::function<bool(HWND)>& condition);

// The first direct child that meets the condition, or null.
HWND FindChildWindow(HWND parent, const std::function<bool(HWND)>& condition);

// The visible dialogs of a thread, the one in front first.
std::vector<HWND> OpenDialogsOf(DWORD threadId);

}  // namespace kvn::test
