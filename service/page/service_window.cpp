#include "service/page/service_window.h"

#include "platform/boundary.h"
#include "platform/module.h"
#include "platform/service_messages.h"
#include "platform/service_protocol.h"
#include "platform/subclass.h"

namespace kvn::service {

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

void ServiceWindow::Announce() const {
    SetWindowTextW(window.Get(), platform::kServiceName);
}

void ServiceWindow::Withdraw() const {
    SetWindowTextW(window.Get(), nullptr);
}

LRESULT CALLBACK ServiceWindow::Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* const self = platform::ObjectOf<ServiceWindow>(handle);
    std::optional<LRESULT> answer;
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
