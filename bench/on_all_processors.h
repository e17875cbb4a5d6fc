// Work that is handed from thread to thread is measured on all processors, as on a user's machine: on a single one the
// thread that takes over waits for the one that has handed over, and the measure says more about turns than about work.
#pragma once

#include <windows.h>

namespace kvn::bench {

// While it lives, this program and those that it starts may use every processor.
class OnAllProcessors {
public:
    OnAllProcessors() {
        DWORD_PTR all = 0;
        if (GetProcessAffinityMask(GetCurrentProcess(), &before, &all)) {
            SetProcessAffinityMask(GetCurrentProcess(), all);
        }
    }
    OnAllProcessors(const OnAllProcessors&) = delete;
    OnAllProcessors& operator=(const OnAllProcessors&) = delete;
    ~OnAllProcessors() { SetProcessAffinityMask(GetCurrentProcess(), before); }

private:
    DWORD_PTR before = 0;
};

}  // namespace kvn::bench
