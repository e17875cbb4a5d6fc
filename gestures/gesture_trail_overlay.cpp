#include "gestures/gesture_trail_overlay.h"

#include "platform/device_context.h"
#include "platform/subclass.h"
#include "platform/unique_resource.h"
#include "resources/resource.h"

namespace kvn::gestures {
namespace {

constexpr COLORREF kTransparent = RGB(5, 0, 0);  // a colour that nobody draws with
constexpr COLORREF kTrailColour = RGB(0, 255, 0);
constexpr int kTrailWidth = 3;
constexpr DWORD kEndingParameter = 9;  // any message with this in its lParam ends the dialog

void CoverScreen(HWND window) {
    SetWindowLongW(window, GWL_EXSTYLE, WS_EX_LAYERED);
    SetLayeredWindowAttributes(window, kTransparent, 0, LWA_COLORKEY);
    // It maximises on the monitor where it stands, and is to cover the one at the origin.
    SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(window, SW_MAXIMIZE);
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW);
}

void EraseBackground(HWND window) {
    const platform::WindowDeviceContext context(window);
    const platform::UniqueBrush brush(CreateSolidBrush(kTransparent));
    if (!context || !brush) return;
    RECT area{};
    GetClientRect(window, &area);
    const platform::SelectedObject noPen(context.Get(), GetStockObject(NULL_PEN));
    const platform::SelectedObject ground(context.Get(), brush.Get());
    // Without a pen a rectangle lacks its last column and row.
    Rectangle(context.Get(), area.left, area.top, area.right + 1, area.bottom + 1);
}

}  // namespace

GestureTrailOverlay::~GestureTrailOverlay() {
    Destroy();
}

void GestureTrailOverlay::Show(HINSTANCE module, HWND owner) {
    if (overlay != nullptr) return;
    overlay = CreateDialogParamW(module, MAKEINTRESOURCEW(IDD_GESTURE_TRAIL), owner, DialogProcedure, 0);
    if (overlay != nullptr) SetWindowLongPtrW(overlay, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void GestureTrailOverlay::Destroy() {
    if (overlay != nullptr) DestroyWindow(overlay);
    overlay = nullptr;
}

void GestureTrailOverlay::StartAt(POINT cursor) {
    lastPoint = cursor;
}

void GestureTrailOverlay::DrawTo(POINT cursor) {
    // A line without length would leave a dot as wide as the pen.
    const bool hasMoved = cursor.x != lastPoint.x || cursor.y != lastPoint.y;
    if (overlay != nullptr && hasMoved) DrawLineTo(cursor);
    lastPoint = cursor;
}

// The window covers the screen from its origin, so its client coordinates are the screen's.
void GestureTrailOverlay::DrawLineTo(POINT cursor) const {
    const platform::WindowDeviceContext context(overlay);
    const platform::UniquePen pen(CreatePen(PS_SOLID, kTrailWidth, kTrailColour));
    if (!context || !pen) return;
    const platform::SelectedObject selectedPen(context.Get(), pen.Get());
    MoveToEx(context.Get(), lastPoint.x, lastPoint.y, nullptr);
    LineTo(context.Get(), cursor.x, cursor.y);
}

INT_PTR CALLBACK GestureTrailOverlay::DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            CoverScreen(window);
            return TRUE;
        case WM_ERASEBKGND:
            EraseBackground(window);
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
