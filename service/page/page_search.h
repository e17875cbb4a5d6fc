// Looking for the settings page among all windows.
#pragma once

namespace kvn::service {

// Whether a dialog of any program has the page's controls. Does not wait for any program.
bool IsPageOpen();

}  // namespace kvn::service
