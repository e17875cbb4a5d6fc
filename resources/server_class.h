// The class that the module serves, for programs that load or register it.
#pragma once

#include <windows.h>

namespace kvn::resources {

inline constexpr CLSID kServerClassId = {0xB7C1D9A4, 0x3E52, 0x4F0B, {0x9C, 0x86, 0x2D, 0x7A, 0x51, 0xE8, 0xF0, 0x43}};

}  // namespace kvn::resources
