// The hidden top-level window by which the page finds the service.
#pragma once

#include <windows.h>

#include "platform/unique_resource.h"
#include "service/page/message_handler.h"

namespace kvn::service {

// Windows of this class with the service's title are ours.
inline constexpr wchar_t kServiceWindowClass[] = L"KvnMouseAplService";

class ServiceWindow {
public:
    // The handler is borrowed and must outlive the window.
    explicit ServiceWindow(IMessageHandler& messageHandler) : handler(messageHandler) {}
    ServiceWindow(const ServiceWindow&) = delete;
    ServiceWindow& operator=(const ServiceWindow&) = delete;
    ~ServiceWindow();

    // The window has no title yet, so the page cannot find it.
    [[nodiscard]] bool Create();
    // Makes the window known to the page and to other starts, or hides it from them.
    void Announce();
    void Withdraw();

    HWND Handle() const { return window.Get(); }

private:
    static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    // Whether an unhandled message is left to Windows; all others are answered with 0.
    bool IsForWindows(UINT message, WPARAM wParam) const;

    IMessageHandler& handler;
    bool isNaming = false;
    bool isClosing = false;
    platform::Owned<HWND, &DestroyWindow> window;
};

// The window of the service that runs in this session; null if none does, or if it is not ready.
HWND FindRunningService();

// Whether another program has a window with the service's title.
bool IsForeignServiceThere();

}  // namespace kvn::service
