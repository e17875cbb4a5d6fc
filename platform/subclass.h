// Subclasses a window: replaces its procedure, and points its user data to the object that handles its messages.
#pragma once

#include <windows.h>

namespace kvn::platform {

// Replaces the window's procedure and sets its user data; returns the previous procedure. Pass every message that is
// not handled to it with CallWindowProcW.
inline WNDPROC Subclass(HWND window, WNDPROC procedure, const void* object) {
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
    return reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
}

// The object in the window's user data; null if there is none.
template <typename Object>
Object* ObjectOf(HWND window) {
    return reinterpret_cast<Object*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

// The procedure of a dialog whose subclass handles all messages that need handling.
inline INT_PTR CALLBACK IgnoreMessage(HWND /*dialog*/, UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    return FALSE;
}

}  // namespace kvn::platform
