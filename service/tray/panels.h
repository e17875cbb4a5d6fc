// The windows that the service opens for the user.
#pragma once

#include <functional>

namespace kvn::service {

// The Mouse control panel, where the settings page is.
[[nodiscard]] bool OpenMouseControlPanel();

// The help page next to the program. Opening it may take a while, so another thread does it, and reports a failure.
void OpenHelpPage(std::function<void()> onFailure);

}  // namespace kvn::service
