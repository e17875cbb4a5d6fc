// Classes of the module's own windows.
#pragma once

#include <windows.h>

namespace kvn::platform {

// The parts of a class that only visible windows need.
struct WindowLook {
    HICON icon = nullptr;
    HCURSOR cursor = nullptr;
    HBRUSH background = nullptr;
};

// Registers a class whose windows have this procedure. Also true if it was there already.
[[nodiscard]] bool RegisterWindowClass(const wchar_t* name, WNDPROC procedure, const WindowLook& look = {});

}  // namespace kvn::platform
