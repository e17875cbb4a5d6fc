// Controls of a dialog.
#pragma once

#include <windows.h>

namespace kvn::platform {

// Enables or disables the control. If it has the focus, `heir` gets the focus before the control is disabled, so that
// the keyboard still works.
inline void EnableControl(HWND dialog, int control, bool enable, HWND heir) {
    const HWND window = GetDlgItem(dialog, control);
    if (!enable && window != nullptr && GetFocus() == window) {
        SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(heir), TRUE);
    }
    EnableWindow(window, enable ? TRUE : FALSE);
}

}  // namespace kvn::platform
