// What an installer does for the settings page: the entries through which the Mouse control panel finds its class.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::control_panel {

// The class that KvnMouseUtil.dll serves: {B7C1D9A4-3E52-4F0B-9C86-2D7A51E8F043}.
inline constexpr CLSID kPageClassId = {0xB7C1D9A4, 0x3E52, 0x4F0B, {0x9C, 0x86, 0x2D, 0x7A, 0x51, 0xE8, 0xF0, 0x43}};

// Writing needs the rights of an administrator. Both throw HostError.
void RegisterPage(const std::wstring& dll);
void UnregisterPage();

}  // namespace kvn::control_panel
