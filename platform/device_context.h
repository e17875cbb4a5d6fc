// Drawing with GDI, where everything that is taken is given back.
#pragma once

#include <windows.h>

namespace kvn::platform {

// The drawing context of a window's client area.
class [[nodiscard]] WindowDeviceContext {
public:
    explicit WindowDeviceContext(HWND target) : window(target), context(GetDC(target)) {}
    ~WindowDeviceContext() {
        if (context != nullptr) ReleaseDC(window, context);
    }
    WindowDeviceContext(const WindowDeviceContext&) = delete;
    WindowDeviceContext& operator=(const WindowDeviceContext&) = delete;

    // False when the window has none.
    explicit operator bool() const { return context != nullptr; }
    HDC Get() const { return context; }

private:
    HWND window;
    HDC context;
};

// A pen or a brush that is selected for as long as this lives; the previous one comes back then.
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
