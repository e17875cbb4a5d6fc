// The "Mouse Properties" sheet.
#pragma once

#include <vector>

#include "tools/control_panel/owned.h"

namespace kvn::control_panel {

inline constexpr wchar_t kSheetTitle[] = L"Mouse Properties";

// Shows the pages until the user ends the sheet with OK or Cancel. Throws HostError when it cannot be opened.
void ShowSheet(std::vector<Page> pages);

}  // namespace kvn::control_panel
