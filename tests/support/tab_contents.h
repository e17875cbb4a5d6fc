// The contents of a tab control of any process.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kvn::test {

// From left to right; up to 63 characters of each.
std::vector<std::wstring> TabTextsOf(HWND tabs);
// In the control's own coordinates.
RECT PlaceOfTab(HWND tabs, int index);

}  // namespace kvn::test
