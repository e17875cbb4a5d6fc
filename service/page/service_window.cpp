#include "service/page/service_window.h"

#include <algorithm>
#include <array>

#include "platform/boundary.h"
#include "platform/module.h"
#include "platform/raised_flag.h"
#include "platform/service_messages.h"
#include "platform/service_protocol.h"
#include "platform/subclass.h"
#include "platform/window_class.h"

namespace kvn::service {
namespace {

constexpr WPARAM kCommandMask = 0xFFF0;  // Windows uses the lowest four bits itself

// Messages that Windows must handle for a hidden window that sometimes has a menu. It also releases raw input, and
// validates the window if another program has made it visible, since Windows would send WM_PAINT forever.
constexpr std::array<UINT, 9> kForWindows{WM_GETTEXT,    WM_GETTEXTLENGTH, WM_ACTIVATE,
                                          WM_NCACTIVATE, WM_CANCELMODE,    WM_QUERYENDSESSION,
                                          WM_PAINT,      WM_INPUT,         WM_NULL};

}  // namespace

bool ServiceWindow::Create() {
    if (!platform::RegisterWindowClass(kServiceWindowClass, Procedure)) return false;
    // A tool window: even if another program shows it, it is in no list of programs.
    window.Reset(CreateWindowExW(WS_EX_TOOLWINDOW, kServiceWindowClass, nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                 platform::ThisModule(), nullptr));
    if (!window) return false;
    SetWindowLongPtrW(window.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    return true;
}

ServiceWindow::~ServiceWindow() {
    isClosing = true;
    window.Reset();
}

void ServiceWindow::Announce() {
    const platform::RaisedFlag naming(isNaming);
    SetWindowTextW(window.Get(), platform::kServiceName);
}

void ServiceWindow::Withdraw() {
    const platform::RaisedFlag naming(isNaming);
    SetWindowTextW(window.Get(), nullptr);
}

// Any program may send this window any message. For some, such as a press on a frame or a menu command, Windows would
// run its own message loop, and in others it would take numbers for pointers. The window needs none of these.
bool ServiceWindow::IsForWindows(UINT message, WPARAM wParam) const {
    if (message == WM_SETTEXT) return isNaming;  // others find the window by its title
    if (message == WM_SYSCOMMAND) return (wParam & kCommandMask) == SC_CLOSE;
    return std::ranges::find(kForWindows, message) != kForWindows.end();
}

LRESULT CALLBACK ServiceWindow::Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* const self = platform::ObjectOf<ServiceWindow>(handle);
    if (self == nullptr || self->isClosing) return DefWindowProcW(handle, message, wParam, lParam);
    std::optional<LRESULT> answer;
    platform::Completes([&] { answer = self->handler.OnMessage({handle, message, wParam, lParam}); });
    if (answer) return *answer;
    return self->IsForWindows(message, wParam) ? DefWindowProcW(handle, message, wParam, lParam) : 0;
}

HWND FindRunningService() {
    return FindWindowW(kServiceWindowClass, platform::kServiceName);
}

bool IsForeignServiceThere() {
    return platform::FindService() != nullptr && FindRunningService() == nullptr;
}

}  // namespace kvn::service
