// Controls of a dialog.
#pragma once

#include <windows.h>

namespace kvn::platform {

// Enables or disables the control. One that has the focus passes it on before it is disabled, so that the keyboard
// keeps a place.
inline void EnableControl(HWND dialog, int control, bool enable) {
    const HWND window = GetDlgItem(dialog, control);
    if (!enable && window != nullptr && GetFocus() == window) SendMessageW(dialog, WM_NEXTDLGCTL, 0, FALSE);
    EnableWindow(window, enable ? TRUE : FALSE);
}

}  // namespace kvn::platform
