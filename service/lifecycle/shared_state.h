// The memory that the service and its watcher share. It exists as long as either of them does; there is one for each
// session.
#pragma once

#include <windows.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/unique_resource.h"
#include "service/input/held_list.h"

namespace kvn::service {

// All zero when it is new. Either process may be killed between any two writes.
struct SharedState {
    static constexpr std::size_t kMaxArguments = 4096;

    HeldList held;
    std::atomic<std::uint32_t> hasEnded;        // the service ends on purpose
    std::atomic<std::uint32_t> watcherProcess;  // 0: none
    // The watcher starts the service again with the arguments in the slot `current`. New ones are written to the other
    // slot.
    std::atomic<std::uint32_t> current;
    std::array<std::array<wchar_t, kMaxArguments>, 2> arguments;

    void KeepArguments(std::wstring_view text);
    std::wstring Arguments() const;
};

class SharedMemory {
public:
    // Creates the memory, or opens that of the other process.
    SharedMemory();
    ~SharedMemory();
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;

    // If memory cannot be shared, it is private to this process.
    SharedState& State() { return *state; }
    bool IsShared() const { return view != nullptr; }
    // Keeps the memory for the other process, even after this one has ended.
    void KeepFor(HANDLE process) const;

private:
    platform::UniqueKernelObject section;
    void* view = nullptr;
    SharedState* state = nullptr;
};

}  // namespace kvn::service
