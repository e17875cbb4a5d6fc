// The file of --log: a line for each press that was not passed on.
#pragma once

#include <windows.h>

#include <string>

#include "platform/critical_section.h"
#include "platform/unique_resource.h"
#include "service/engine/orders.h"

namespace kvn::service {

class PressLog {
public:
    // Adds lines to this file from now on; an empty path: to none. Other programs may read, rename and delete it.
    void WriteTo(const std::wstring& path);

    // From any thread but the hook's. A line that cannot be written is lost.
    void Write(const Order& order, const std::wstring& profile, const std::wstring& done);

    bool IsOpen() const;

    // Whether lines could be added to this file; creates it if it is missing.
    static bool CanWriteTo(const std::wstring& path);

private:
    mutable platform::CriticalSection section;
    platform::UniqueFile file{INVALID_HANDLE_VALUE};
};

// The line with its end: local time, control, function code, profile and action, separated by TABs.
std::wstring LogLine(const SYSTEMTIME& time, const Order& order, const std::wstring& profile, const std::wstring& done);

}  // namespace kvn::service
