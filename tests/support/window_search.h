// Finds windows and reads their contents.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace kvn::test {

std::wstring ClassOf(HWND window);
// The text that the window itself reports.
std::wstring TextOf(HWND window);
// A top-level window's title, without waiting for its thread.
std::wstring TitleOf(HWND window);

// The first top-level window of this process that meets the condition, or null.
HWND FindTopLevelWindow(const std::function<bool(HWND)>& condition);

// The first direct child that meets the condition, or null.
HWND FindChildWindow(HWND parent, const std::function<bool(HWND)>& condition);

// The visible dialogs of a thread, from front to back.
std::vector<HWND> OpenDialogsOf(DWORD threadId);

}  // namespace kvn::test
