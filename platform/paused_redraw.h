// Changes lists without painting them in between.
#pragma once

#include <windows.h>

namespace kvn::platform {

// While it lives, changes of a list view, or of a combo box and its list, are not painted; they are painted together at
// its end.
class [[nodiscard]] PausedRedraw {
public:
    explicit PausedRedraw(HWND pausedList) : list(pausedList) { SendMessageW(list, WM_SETREDRAW, FALSE, 0); }
    ~PausedRedraw() {
        SendMessageW(list, WM_SETREDRAW, TRUE, 0);
        if (list != nullptr) InvalidateRect(list, nullptr, TRUE);
    }
    PausedRedraw(const PausedRedraw&) = delete;
    PausedRedraw& operator=(const PausedRedraw&) = delete;

private:
    HWND list;
};

}  // namespace kvn::platform
