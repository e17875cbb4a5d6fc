#include "service/page/service_window.h"

#include "platform/boundary.h"
#include "platform/module.h"
#include "platform/raised_flag.h"
#include "platform/service_messages.h"
#include "platform/service_protocol.h"
#include "platform/subclass.h"

namespace kvn::service {
namespace {

constexpr WPARAM kCommandMask = 0xFFF0;  // Windows uses the lowest four bits itself

}  // namespace

bool ServiceWindow::Create() {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = platform::ThisModule();
    windowClass.lpszClassName = kServiceWindowClass;
    if (RegisterClassExW(&windowClass) == 0 && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) return false;
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

// Its title is what it is found by. Windows follows a mouse that presses a frame, or a command of a menu, in a loop of
// its own: the window has neither, and its thread has others to serve.
bool ServiceWindow::Refuses(UINT message, WPARAM wParam) const {
    if (message == WM_SETTEXT) return !isNaming;
    if (message == WM_NCCREATE) return true;  // it would name the window, too
    if (message >= WM_NCMOUSEMOVE && message <= WM_NCXBUTTONDBLCLK) return true;
    if (message == WM_DESTROY || message == WM_NCDESTROY) return !isClosing;
    return message == WM_SYSCOMMAND && (wParam & kCommandMask) != SC_CLOSE;
}

LRESULT CALLBACK ServiceWindow::Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* const self = platform::ObjectOf<ServiceWindow>(handle);
    std::optional<LRESULT> answer;
    if (self != nullptr && self->Refuses(message, wParam)) return 0;
    if (self != nullptr) {
        platform::Completes([&] { answer = self->handler.OnMessage({handle, message, wParam, lParam}); });
    }
    return answer ? *answer : DefWindowProcW(handle, message, wParam, lParam);
}

HWND FindRunningService() {
    return FindWindowW(kServiceWindowClass, platform::kServiceName);
}

bool IsForeignServiceThere() {
    return platform::FindService() != nullptr && FindRunningService() == nullptr;
}

}  // namespace kvn::service
