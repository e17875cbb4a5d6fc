// The debug output of this process.
#pragma once

#include <windows.h>

#include <mutex>
#include <string>
#include <utility>

namespace kvn::test {

// Records from its construction on; one at a time.
class DebugOutput {
public:
    DebugOutput() : handler(AddVectoredExceptionHandler(1, Record)) { Take(); }
    DebugOutput(const DebugOutput&) = delete;
    DebugOutput& operator=(const DebugOutput&) = delete;
    ~DebugOutput() { RemoveVectoredExceptionHandler(handler); }

    std::string Text() const {
        const std::lock_guard guard(mutex);
        return written;
    }
    // Returns the text so far, and forgets it.
    std::string Take() {
        const std::lock_guard guard(mutex);
        return std::exchange(written, {});
    }

private:
    // Debug output is an exception that a debugger would handle. Its arguments are the length of the text with its
    // zero, and the text.
    static LONG CALLBACK Record(EXCEPTION_POINTERS* exception) {
        const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
        constexpr DWORD kDebugPrint = 0x40010006;
        if (record.ExceptionCode != kDebugPrint) return EXCEPTION_CONTINUE_SEARCH;
        const std::lock_guard guard(mutex);
        written += reinterpret_cast<const char*>(record.ExceptionInformation[1]);
        return EXCEPTION_CONTINUE_EXECUTION;
    }

    void* handler;
    static inline std::mutex mutex;
    static inline std::string written;
};

}  // namespace kvn::test
