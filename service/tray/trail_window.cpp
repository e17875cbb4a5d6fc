#include "service/tray/trail_window.h"

#include "platform/boundary.h"
#include "platform/device_context.h"
#include "platform/module.h"
#include "platform/subclass.h"
#include "platform/window_class.h"

namespace kvn::service {
namespace {

constexpr wchar_t kClassName[] = L"KvnMouseAplTrail";
constexpr DWORD kStyles = WS_EX_LAYERED | WS_EX_TRANSPARENT | WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW | WS_EX_TOPMOST;
constexpr UINT_PTR kDestroyTimer = 1;
constexpr UINT kDestroyMilliseconds = 500;

}  // namespace

void TrailWindow::Begin(POINT place) {
    if (!window && !Create()) return;
    trail.StartAt(InWindow(place));
    SetWindowPos(window.Get(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

// Draws the whole path again, so that each step repairs what may have been lost.
void TrailWindow::MoveTo(POINT place) {
    if (!window || !trail.ExtendTo(InWindow(place))) return;
    const platform::WindowDeviceContext context(window.Get());
    if (context) trail.Draw(context.Get());
}

// Some systems send a click to this window first, though it takes none. A click to a destroyed window would be lost, so
// the window is hidden now and destroyed a moment later.
void TrailWindow::End() {
    const HWND leaving = window.Release();
    if (leaving == nullptr) return;
    SetWindowLongPtrW(leaving, GWLP_USERDATA, 0);
    ShowWindow(leaving, SW_HIDE);
    if (SetTimer(leaving, kDestroyTimer, kDestroyMilliseconds, nullptr) == 0) DestroyWindow(leaving);
}

bool TrailWindow::Create() {
    if (!platform::RegisterWindowClass(kClassName, Procedure)) return false;
    origin = {GetSystemMetrics(SM_XVIRTUALSCREEN), GetSystemMetrics(SM_YVIRTUALSCREEN)};
    window.Reset(CreateWindowExW(kStyles, kClassName, nullptr, WS_POPUP, origin.x, origin.y,
                                 GetSystemMetrics(SM_CXVIRTUALSCREEN), GetSystemMetrics(SM_CYVIRTUALSCREEN), nullptr,
                                 nullptr, platform::ThisModule(), nullptr));
    if (!window) return false;
    SetWindowLongPtrW(window.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    trail.Clear();
    // An opaque window would cover the screen.
    if (!SetLayeredWindowAttributes(window.Get(), platform::kTrailGround, 0, LWA_COLORKEY)) window.Reset();
    return static_cast<bool>(window);
}

void TrailWindow::Paint(HDC context) const {
    RECT area{};
    GetClientRect(window.Get(), &area);
    platform::EraseTrailGround(context, area);
    trail.Draw(context);
}

LRESULT CALLBACK TrailWindow::Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const auto* const self = platform::ObjectOf<const TrailWindow>(handle);
    if (self == nullptr && message == WM_TIMER) DestroyWindow(handle);
    if (self != nullptr && message == WM_ERASEBKGND) {
        platform::Completes([&] { self->Paint(reinterpret_cast<HDC>(wParam)); });
        return TRUE;
    }
    if (message == WM_NCHITTEST) return HTTRANSPARENT;
    if (message == WM_MOUSEACTIVATE) return MA_NOACTIVATE;
    if (message == WM_CLOSE || message == WM_SYSCOMMAND) return 0;  // only its owner closes it
    return DefWindowProcW(handle, message, wParam, lParam);
}

}  // namespace kvn::service
