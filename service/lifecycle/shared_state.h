// What the service and its watcher share in memory. It lives as long as one of them does, once for each session.
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
    std::atomic<std::uint32_t> hasEnded;        // the service ends because it is meant to
    std::atomic<std::uint32_t> watcherProcess;  // 0: none
    // The arguments with which the watcher starts the service again, in the slot that `current` names: the other one is
    // written meanwhile.
    std::atomic<std::uint32_t> current;
    std::array<std::array<wchar_t, kMaxArguments>, 2> arguments;

    void KeepArguments(std::wstring_view text);
    std::wstring Arguments() const;
};

class SharedMemory {
public:
    // Makes the memory, or finds that of the other process.
    SharedMemory();
    ~SharedMemory();
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;

    // Without memory to share it is this process's own.
    SharedState& State() { return *state; }
    bool IsShared() const { return view != nullptr; }
    // The other process finds the memory even when it gets to look for it only after this one has ended.
    void KeepFor(HANDLE process) const;

private:
    platform::UniqueKernelObject section;
    void* view = nullptr;
    SharedState* state = nullptr;
};

}  // namespace kvn::service
