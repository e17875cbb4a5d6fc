// The smallest program that puts one key on one button, in twenty lines; and a still smaller one, whose hook only
// passes input on.
#pragma once

#include <windows.h>

#include "platform/unique_resource.h"

namespace kvn::bench {

// Runs on a separate thread, for its own lifetime.
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
