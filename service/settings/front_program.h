// The program whose window is in front; the service's own windows do not count.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::service {

class FrontProgram {
public:
    struct Change {
        bool isOtherWindow = false;
        bool isOtherProgram = false;
    };

    // Finds the window that the user works with. The last one stays while there is none, or while the service's own
    // window or Windows' list of programs (Alt+Tab) is in front.
    Change Look();

    HWND Window() const { return window; }                   // null until one was seen
    const std::wstring& Program() const { return program; }  // empty if Windows hides its path

private:
    HWND window = nullptr;
    DWORD processId = 0;
    std::wstring program;
};

}  // namespace kvn::service
