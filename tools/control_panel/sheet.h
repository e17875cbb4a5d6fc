// The "Mouse Properties" sheet.
#pragma once

#include <vector>

#include "tools/control_panel/owned.h"

namespace kvn::control_panel {

// The title that Windows gives its own sheet in the user's language.
const wchar_t* SheetTitle();

// Shows the pages until the user ends the sheet with OK or Cancel. Throws HostError if it cannot be opened.
void ShowSheet(std::vector<Page> pages);

}  // namespace kvn::control_panel
