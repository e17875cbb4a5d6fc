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

// The process runs this program with this option. Nothing when the system does not say. Wine's own answer about another
// process is that of the asking one; there the system below it is asked.
std::optional<ProcessUse> UseOf(HANDLE process, const char* program, const char* option);

}  // namespace kvn::test
