// Finding the sheet, the dialogs above it and the controls within it, among the windows of the calling thread.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::control_panel {

// All three return null if there is none, or none is visible.
HWND FindSheet(const wchar_t* title);
HWND FindDialogAbove(const wchar_t* sheetTitle);
// Searches the page and its panes. Hidden controls do not count, as panes use the same ids.
HWND FindVisibleControl(HWND page, int id);

// The title of a dialog and, for a message box, its text.
std::wstring DescribeDialog(HWND dialog);

}  // namespace kvn::control_panel
