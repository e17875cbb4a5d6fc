// A Win32 critical section as an owning type that std::lock_guard can hold.
#pragma once

#include <windows.h>

namespace kvn::platform {

class CriticalSection {
public:
    CriticalSection() { InitializeCriticalSection(&section); }
    ~CriticalSection() { DeleteCriticalSection(&section); }
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;

    // Named as the standard library's locks require.
    void lock() { EnterCriticalSection(&section); }
    void unlock() { LeaveCriticalSection(&section); }

private:
    CRITICAL_SECTION section{};
};

}  // namespace kvn::platform
