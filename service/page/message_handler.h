// A part of the service that handles messages of the service's window.
#pragma once

#include <windows.h>

#include <optional>

namespace kvn::service {

struct Message {
    HWND window = nullptr;
    UINT id = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
};

class IMessageHandler {
public:
    // Without an answer the message goes to the next handler, and finally to Windows.
    virtual std::optional<LRESULT> OnMessage(const Message& message) = 0;

protected:
    ~IMessageHandler() = default;
};

}  // namespace kvn::service
