// Drawing with GDI, with owners that release everything they acquire.
#pragma once

#include <windows.h>

namespace kvn::platform {

// The drawing context of a window's client area; of the screen if the window is null.
class [[nodiscard]] WindowDeviceContext {
public:
    explicit WindowDeviceContext(HWND target) : window(target), context(GetDC(target)) {}
    ~WindowDeviceContext() {
        if (context != nullptr) ReleaseDC(window, context);
    }
    WindowDeviceContext(const WindowDeviceContext&) = delete;
    WindowDeviceContext& operator=(const WindowDeviceContext&) = delete;

    // False if the window has none.
    explicit operator bool() const { return context != nullptr; }
    HDC Get() const { return context; }

private:
    HWND window;
    HDC context;
};

// Selects a pen or a brush for its own lifetime; afterwards the previous one is selected again.
class [[nodiscard]] SelectedObject {
public:
    SelectedObject(HDC deviceContext, HGDIOBJ object)
        : context(deviceContext), previous(SelectObject(deviceContext, object)) {}
    ~SelectedObject() { SelectObject(context, previous); }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

private:
    HDC context;
    HGDIOBJ previous;
};

}  // namespace kvn::platform
