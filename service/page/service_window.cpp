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

// What a hidden window that sometimes has a menu needs Windows for. Raw input is given back; a window that somebody has
// made visible is painted again and again until it says that it has been.
constexpr std::array<UINT, 9> kForWindows{WM_GETTEXT,    WM_GETTEXTLENGTH, WM_ACTIVATE,
                                          WM_NCACTIVATE, WM_CANCELMODE,    WM_QUERYENDSESSION,
                                          WM_PAINT,      WM_INPUT,         WM_NULL};

}  // namespace

bool ServiceWindow::Create() {
    if (!platform::RegisterWindowClass(kServiceWindowClass, Procedure)) return false;
    // A tool window, should anybody ever show it: it is in no list of programs.
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

// Any program may send the window anything. Windows follows a mouse that presses a frame, or a command of a menu, in a
// loop of its own, and takes some numbers for pointers: the window has none of what they are for.
bool ServiceWindow::IsForWindows(UINT message, WPARAM wParam) const {
    if (message == WM_SETTEXT) return isNaming;  // its title is what it is found by
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
