// Looking for the settings page among all windows.
#pragma once

namespace kvn::service {

// Whether a dialog of any program has the page's controls. Waits for no program.
bool IsPageOpen();

}  // namespace kvn::service
