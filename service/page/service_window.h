// The hidden top-level window that the page knows the service by.
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

    // The window has no title yet, so nobody finds it.
    bool Create();
    // From now on, or no longer, the page and other starts find it.
    void Announce();
    void Withdraw();

    HWND Handle() const { return window.Get(); }

private:
    static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    // Whether a message that nobody handles is left to Windows; any other is answered with 0.
    bool IsForWindows(UINT message, WPARAM wParam) const;

    IMessageHandler& handler;
    bool isNaming = false;
    bool isClosing = false;
    platform::Owned<HWND, &DestroyWindow> window;
};

// The window of the service that runs in this session; null when none does, or when it is not ready.
HWND FindRunningService();

// Whether another program has a window with the service's title.
bool IsForeignServiceThere();

}  // namespace kvn::service
