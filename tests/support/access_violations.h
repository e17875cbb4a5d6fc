// Counts this process's accesses to invalid memory; in a window procedure they would go unnoticed.
#pragma once

#include <windows.h>

#include <atomic>

namespace kvn::test {

class AccessViolations {
public:
    AccessViolations() : handler(AddVectoredExceptionHandler(1, Count)) { count = 0; }
    AccessViolations(const AccessViolations&) = delete;
    AccessViolations& operator=(const AccessViolations&) = delete;
    ~AccessViolations() { RemoveVectoredExceptionHandler(handler); }

    static int Seen() { return count; }

private:
    static LONG CALLBACK Count(EXCEPTION_POINTERS* exception) {
        if (exception->ExceptionRecord->ExceptionCode == EXCEPTION_ACCESS_VIOLATION) ++count;
        return EXCEPTION_CONTINUE_SEARCH;
    }

    void* handler;
    static inline std::atomic<int> count;
};

}  // namespace kvn::test
