// Which program's window is in front of all others, except the service's own.
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

    // Finds the window that the user works with. While there is none, or it is one of the service's own or Windows'
    // list of programs (Alt+Tab), the last one stays.
    Change Look();

    HWND Window() const { return window; }                   // null until one was seen
    const std::wstring& Program() const { return program; }  // empty if Windows hides its path

private:
    HWND window = nullptr;
    DWORD processId = 0;
    std::wstring program;
};

}  // namespace kvn::service
