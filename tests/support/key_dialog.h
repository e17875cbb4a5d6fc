// The open dialog "Register arbitrary key".
#pragma once

#include <windows.h>

#include <string>

#include "resources/resource.h"
#include "tests/support/waiting.h"
#include "tests/support/window_search.h"

namespace kvn::test {

inline HWND AwaitKeyDialog() {
    return Await("the arbitrary-key dialog", [] {
        return FindTopLevelWindow(
            [](HWND window) { return IsWindowVisible(window) && GetDlgItem(window, IDC_KEYS_CLEAR) != nullptr; });
    });
}

inline void EnterKey(HWND dialog, int input, const std::wstring& name) {
    SendDlgItemMessageW(dialog, input, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
}

// Presses one of the dialog's buttons and waits until the dialog has closed.
inline void CloseKeyDialog(HWND dialog, int button) {
    PostMessageW(GetDlgItem(dialog, button), BM_CLICK, 0, 0);
    Await("the end of the arbitrary-key dialog", [=] { return !IsWindow(dialog); });
}

}  // namespace kvn::test
