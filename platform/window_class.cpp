#include "platform/window_class.h"

#include "platform/module.h"

namespace kvn::platform {

bool RegisterWindowClass(const wchar_t* name, WNDPROC procedure, const WindowLook& look) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = ThisModule();
    windowClass.hIcon = look.icon;
    windowClass.hCursor = look.cursor;
    windowClass.hbrBackground = look.background;
    windowClass.lpszClassName = name;
    return RegisterClassExW(&windowClass) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

}  // namespace kvn::platform
