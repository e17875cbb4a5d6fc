#include "gestures/gesture_trail_overlay.h"

#include "platform/device_context.h"
#include "platform/subclass.h"
#include "resources/resource.h"

namespace kvn::gestures {
namespace {

constexpr DWORD kEndingParameter = 9;  // lParam of any message; ends the dialog (docs/kept-behaviour.md)

void CoverScreen(HWND window) {
    SetWindowLongW(window, GWL_EXSTYLE, WS_EX_LAYERED);
    SetLayeredWindowAttributes(window, platform::kTrailGround, 0, LWA_COLORKEY);
    // A window maximises on its own monitor, and this one must cover the monitor at the origin.
    SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(window, SW_MAXIMIZE);
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW);
}

}  // namespace

GestureTrailOverlay::~GestureTrailOverlay() {
    Destroy();
}

void GestureTrailOverlay::Show(HINSTANCE module, HWND owner) {
    if (overlay != nullptr) return;
    trail.Clear();
    overlay = CreateDialogParamW(module, MAKEINTRESOURCEW(IDD_GESTURE_TRAIL), owner, DialogProcedure, 0);
    if (overlay != nullptr) SetWindowLongPtrW(overlay, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void GestureTrailOverlay::Destroy() {
    if (overlay != nullptr) DestroyWindow(overlay);
    overlay = nullptr;
}

void GestureTrailOverlay::StartAt(POINT cursor) {
    trail.StartAt(cursor);
}

// The window covers the screen from its origin, so its client coordinates are the screen's. All of the path is drawn
// again, so that each step restores what may have been lost.
void GestureTrailOverlay::DrawTo(POINT cursor) {
    if (!trail.ExtendTo(cursor) || overlay == nullptr) return;
    const platform::WindowDeviceContext context(overlay);
    if (context) trail.Draw(context.Get());
}

// The path so far stays visible when something erases the window.
void GestureTrailOverlay::Repaint(HWND window) {
    const platform::WindowDeviceContext context(window);
    if (!context) return;
    RECT area{};
    GetClientRect(window, &area);
    platform::EraseTrailGround(context.Get(), area);
    const auto* self = platform::ObjectOf<GestureTrailOverlay>(window);
    if (self != nullptr) self->trail.Draw(context.Get());
}

INT_PTR CALLBACK GestureTrailOverlay::DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            CoverScreen(window);
            return TRUE;
        case WM_ERASEBKGND:
            Repaint(window);
            return TRUE;
        case WM_NCDESTROY:  // with its owner, or closed by the user
            if (auto* self = platform::ObjectOf<GestureTrailOverlay>(window)) self->overlay = nullptr;
            break;
        default:
            break;
    }
    if (static_cast<DWORD>(lParam) == kEndingParameter) {
        EndDialog(window, 1);
        return TRUE;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace kvn::gestures
