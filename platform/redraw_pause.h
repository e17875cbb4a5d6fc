// Keeps a list from painting while many of its rows change.
#pragma once

#include <windows.h>

namespace kvn::platform {

class RedrawPause {
public:
    explicit RedrawPause(HWND pausedList) : list(pausedList) { SendMessageW(list, WM_SETREDRAW, FALSE, 0); }
    RedrawPause(const RedrawPause&) = delete;
    RedrawPause& operator=(const RedrawPause&) = delete;
    ~RedrawPause() {
        SendMessageW(list, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(list, nullptr, TRUE);
    }

private:
    HWND list;
};

}  // namespace kvn::platform
