// What the page says to the property sheet around it.
#pragma once

#include <windows.h>

namespace kvn::page {

// The page's settings have changed: the sheet enables Apply.
void MarkPageChanged(HWND page);

}  // namespace kvn::page
