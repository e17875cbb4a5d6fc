// Work that other threads leave for the thread of the service's window.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <vector>

#include "platform/critical_section.h"
#include "service/page/message_handler.h"

namespace kvn::service {

class PostedWork : public IMessageHandler {
public:
    virtual ~PostedWork() = default;

    void RunOn(HWND window) { receiver = window; }
    // From any thread. Work that finds no memory, or no window, is lost.
    void Post(std::function<void()> work) noexcept;

    std::optional<LRESULT> OnMessage(const Message& message) override;

private:
    std::vector<std::function<void()>> TakeAll();

    HWND receiver = nullptr;
    platform::CriticalSection section;
    std::vector<std::function<void()>> waiting;
};

}  // namespace kvn::service
