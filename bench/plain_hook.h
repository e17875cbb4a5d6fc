// The twenty lines that people write who want one key on one button; and less: a hook that only passes on.
#pragma once

#include <windows.h>

#include "platform/unique_resource.h"

namespace kvn::bench {

// On a thread of its own, for as long as it lives.
class PlainHook {
public:
    enum class Kind { PassesOn, PressesEscapeForButton4 };

    explicit PlainHook(Kind kind);
    PlainHook(const PlainHook&) = delete;
    PlainHook& operator=(const PlainHook&) = delete;
    ~PlainHook();

private:
    static DWORD WINAPI Run(void* self) noexcept;

    Kind kind;
    platform::UniqueKernelObject ready{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    platform::UniqueKernelObject thread;
    DWORD threadId = 0;
};

}  // namespace kvn::bench
