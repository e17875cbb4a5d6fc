// The service's log: one line for each event, in a file and in a window.
#pragma once

#include <windows.h>

#include <chrono>
#include <string>
#include <string_view>

#include "platform/unique_resource.h"

namespace kvn::service_double {

class ServiceLog {
public:
    // Appends to the file `path`; an empty name means no file. Other programs may read, rename and append to it
    // meanwhile.
    explicit ServiceLog(const std::wstring& path);

    // False if the file could not be opened.
    bool IsReady() const { return !wantsFile || file; }

    // Shows lines in this multi-line edit control too from now on; null stops that. The control is borrowed.
    void ShowIn(HWND control) { view = control; }

    // Adds a line that begins with the milliseconds since the log was created, and the local time.
    void Write(std::wstring_view text);

private:
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    bool wantsFile;
    platform::UniqueFile file;
    HWND view = nullptr;
};

}  // namespace kvn::service_double
