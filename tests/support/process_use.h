// The memory, handles and processor time of another program.
#pragma once

#include <windows.h>

#include <optional>

namespace kvn::test {

struct ProcessUse {
    double processorMilliseconds = 0;
    double privateKilobytes = 0;
    double handles = 0;
};

// The process runs this program with this option. Nothing if the system does not report it. Wine reports the caller's
// own figures for any other process, so under Wine this asks the system below.
std::optional<ProcessUse> UseOf(HANDLE process, const char* program, const char* option);

}  // namespace kvn::test
