// Windows of another process: finding them and reading them by messages. A window that does not answer fails the test.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "tests/support/window_search.h"

namespace kvn::end_to_end {

// Its class, title and id, for reports.
std::string Describe(HWND window);

// Throws StoryError when the window's thread does not answer within seconds.
LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

using test::ClassOf;
using test::TitleOf;
// As the window reports it.
std::wstring TextOf(HWND window);

// Null when the process has no such top-level window. `isWanted` must not throw.
HWND FindTopLevel(DWORD processId, const std::function<bool(HWND)>& isWanted);

// The window that has the keyboard focus of this window's thread, or null.
HWND FocusOf(HWND window);

RECT ScreenRectangle(HWND window);
void Click(HWND window);

POINT MiddleOf(const RECT& area);

// What a common control writes through the lParam of a message. Such pointers are not carried across processes. The
// rectangle's left side selects which of an item's rectangles the list view returns.
RECT ReadRectangle(HWND window, UINT message, WPARAM wParam, LONG kind = 0);
std::wstring ReadListText(HWND list, int row, int column);

}  // namespace kvn::end_to_end
