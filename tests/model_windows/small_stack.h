// Runs code with little stack left, as it may be deep inside another program.
#pragma once

#include <windows.h>

#include <malloc.h>
#include <cstddef>
#include <functional>
#include <thread>

namespace kvn::model::test {

inline constexpr std::size_t kSmallStack = std::size_t{256} * 1024;

// Bytes between the caller's stack pointer and the end of its stack.
inline std::size_t StackLeft() {
    MEMORY_BASIC_INFORMATION stack{};
    const char here = 0;
    VirtualQuery(&here, &stack, sizeof stack);
    return static_cast<std::size_t>(&here - static_cast<const char*>(stack.AllocationBase));
}

// Overflowing what is left ends the program. Some systems give no thread less than a megabyte, so the rest is used up.
inline void RunWithStackOf(std::size_t bytes, const std::function<void()>& work) {
    std::thread([&] {
        const std::size_t surplus = StackLeft() - bytes;
        volatile char* const used = static_cast<volatile char*>(_alloca(surplus));
        used[0] = 1;
        work();
        used[surplus - 1] = 1;
    }).join();
}

}  // namespace kvn::model::test
