// The module that this code is linked into.
#pragma once

#include <windows.h>

namespace kvn::platform {

// The instance that every resource is loaded from: the DLL's, not the host program's.
HINSTANCE ThisModule();

}  // namespace kvn::platform
