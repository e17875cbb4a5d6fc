// Classes of the module's own windows.
#pragma once

#include <windows.h>

namespace kvn::platform {

// What only windows have that people see.
struct WindowLook {
    HICON icon = nullptr;
    HCURSOR cursor = nullptr;
    HBRUSH background = nullptr;
};

// A class whose windows have this procedure. True also when it was there already.
[[nodiscard]] bool RegisterWindowClass(const wchar_t* name, WNDPROC procedure, const WindowLook& look = {});

}  // namespace kvn::platform
