// Which program's window is in front of all others, the service's own left aside.
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

    // Looks which window has the user's attention. While none has it, one of the service's own, or Windows' list of
    // programs (Alt+Tab), it is the last one.
    Change Look();

    HWND Window() const { return window; }                   // null before any was seen
    const std::wstring& Program() const { return program; }  // empty when its path is a secret

private:
    HWND window = nullptr;
    DWORD processId = 0;
    std::wstring program;
};

}  // namespace kvn::service
