// Finds windows and reads their contents.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/support/window_names.h"

namespace kvn::test {

inline constexpr wchar_t kDialogClass[] = L"#32770";

// The text that the window itself reports.
std::wstring TextOf(HWND window);

// The first top-level window of this process, or of another, that meets the condition, or null. The condition must not
// throw.
HWND FindTopLevelWindow(const std::function<bool(HWND)>& condition);
HWND FindTopLevelWindowOf(DWORD processId, const std::function<bool(HWND)>& condition);

// The first direct child that meets the condition, or null.
HWND FindChildWindow(HWND parent, const std::function<bool(HWND)>& condition);

// The window that has the keyboard focus of this window's thread, or null.
HWND FocusOf(HWND window);

// The visible dialogs of a thread, the one in front first.
std::vector<HWND> OpenDialogsOf(DWORD threadId);

}  // namespace kvn::test
