// The installer's part for the settings page: the entries through which the Mouse control panel finds its class.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::control_panel {

// Writing needs administrator rights. Both throw HostError.
void RegisterPage(const std::wstring& dll);
void UnregisterPage();

}  // namespace kvn::control_panel
