// What the service opens for its user.
#pragma once

#include <functional>

namespace kvn::service {

// The Mouse control panel, where the settings page is.
bool OpenMouseControlPanel();

// The help page beside the program. Opening it may take long, so another thread does it, which says when it fails.
void OpenHelpPage(std::function<void()> onFailure);

}  // namespace kvn::service
