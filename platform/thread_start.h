// Threads that share their state with their owners. The state lives as long as any of them, so that a hanging thread
// can be left behind.
#pragma once

#include <windows.h>

#include <memory>
#include <tuple>

#include "platform/boundary.h"
#include "platform/unique_resource.h"

namespace kvn::platform {

template <typename Shared>
struct ThreadStart {
    std::shared_ptr<Shared> shared;
    void (*body)(Shared&);
};

template <typename Shared>
DWORD WINAPI RunThread(void* parameter) {
    const std::unique_ptr<ThreadStart<Shared>> start(static_cast<ThreadStart<Shared>*>(parameter));
    const bool isComplete = Completes([&] { start->body(*start->shared); });
    return isComplete ? 0 : 1;
}

// Null if no thread can be created.
template <typename Shared>
UniqueKernelObject StartThread(std::shared_ptr<Shared> shared, void (*body)(Shared&), int priority) {
    auto start = std::make_unique<ThreadStart<Shared>>(ThreadStart<Shared>{std::move(shared), body});
    UniqueKernelObject thread(CreateThread(nullptr, 0, RunThread<Shared>, start.get(), CREATE_SUSPENDED, nullptr));
    if (!thread) return thread;
    std::ignore = start.release();
    SetThreadPriority(thread.Get(), priority);
    ResumeThread(thread.Get());
    return thread;
}

}  // namespace kvn::platform
