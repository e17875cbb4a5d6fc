#include "gestures/gesture_edit_dialog.h"

#include <algorithm>
#include <utility>

#include "gestures/arbitrary_key_dialog.h"
#include "gestures/function_combo.h"
#include "gestures/gesture_button.h"
#include "gestures/gesture_texts.h"
#include "platform/boundary.h"
#include "platform/combo_box.h"
#include "platform/service_messages.h"
#include "platform/texts.h"
#include "platform/window_text.h"
#include "resources/resource.h"

namespace kvn::gestures {
namespace {

constexpr UINT_PTR kCaptureTimer = 221;
constexpr UINT kCaptureInterval = 100;  // milliseconds
constexpr int kMaxFieldText = 512;

// Follows a confirmed gesture, wherever the cursor is: docs/kept-behaviour.md.
void ClickLeftButton() {
    mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
    mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
}

HBRUSH ColourOfStrokeField(HDC context) {
    SetBkColor(context, GetSysColor(COLOR_WINDOW));
    SetTextColor(context, GetSysColor(COLOR_WINDOWTEXT));
    return GetSysColorBrush(COLOR_WINDOW);
}

}  // namespace

GestureEditDialog::GestureEditDialog(const model::MouseSettings& mouseSettings,
                                     const platform::MessageBoxes& messageBoxes)
    : settings(mouseSettings), boxes(messageBoxes) {}

void GestureEditDialog::Run(HINSTANCE module, HWND owner, GestureEditRequest editRequest) {
    request = std::move(editRequest);
    manager.SetCallback(OnGestureNotice, this);
    RunModal(module, IDD_EDIT_GESTURE, owner);
    manager.Disarm();
}

INT_PTR GestureEditDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            OnInitDialog();
            return TRUE;
        case WM_CTLCOLORSTATIC:
            if (reinterpret_cast<HWND>(lParam) != Control(IDC_GESTURE_STROKE)) return FALSE;
            return reinterpret_cast<INT_PTR>(ColourOfStrokeField(reinterpret_cast<HDC>(wParam)));
        case WM_TIMER:
            if (wParam != kCaptureTimer) return FALSE;
            OnTick();
            return TRUE;
        case WM_COMMAND:
            OnCommand(LOWORD(wParam), HIWORD(wParam));
            return TRUE;
        case WM_DESTROY:
            OnDestroy();
            return TRUE;
        default:
            return FALSE;
    }
}

void GestureEditDialog::OnInitDialog() {
    platform::NotifyGestureEditBegin();
    AddFunctions(Control(IDC_GESTURE_FUNCTION), Module(), model::FunctionsForGesture(settings.os));
    SendDlgItemMessageW(Window(), IDC_GESTURE_MEMO, EM_LIMITTEXT, kMaxFieldText, 0);
    if (request.mode == GestureEditMode::Edit) ShowGesture();
    SetTimer(Window(), kCaptureTimer, kCaptureInterval, nullptr);
}

void GestureEditDialog::ShowGesture() {
    const model::GestureEntry& gesture = request.gesture;
    ShowStroke(gesture.stroke);
    SetDlgItemTextW(Window(), IDC_GESTURE_MEMO, gesture.memo.c_str());
    const HWND functions = Control(IDC_GESTURE_FUNCTION);
    const auto index = platform::FindComboData(functions, gesture.function);
    if (!index) return;
    if (gesture.function == model::kFunctionArbitraryKey) ShowArbitraryKeys(functions, Module(), gesture.etcKey);
    SendMessageW(functions, CB_SETCURSEL, static_cast<WPARAM>(*index), 0);
}

void GestureEditDialog::ShowStroke(const std::wstring& text) {
    SetDlgItemTextW(Window(), IDC_GESTURE_STROKE, text.c_str());
}

void GestureEditDialog::OnCommand(int control, int notification) {
    switch (control) {
        case IDC_GESTURE_FUNCTION:
            OnFunctionNotification(static_cast<UINT>(notification));
            break;
        case IDC_GESTURE_STROKE:
            if (notification == STN_CLICKED) OnStrokeClicked();
            break;
        case IDOK:
            OnOk();
            break;
        case IDCANCEL:
            End(platform::DialogResult::Cancelled);
            break;
        default:
            break;
    }
}

void GestureEditDialog::OnFunctionNotification(UINT notification) {
    const HWND functions = Control(IDC_GESTURE_FUNCTION);
    if (notification == CBN_DROPDOWN) platform::WidenDropList(functions);
    functionList.OnNotification(functions, notification);
    if (notification == CBN_SELCHANGE) OnFunctionChosen();
}

void GestureEditDialog::OnFunctionChosen() {
    const HWND functions = Control(IDC_GESTURE_FUNCTION);
    if (platform::SelectedComboData(functions) != model::kFunctionArbitraryKey) return;
    // The key dialog takes the focus, which closes an open list without a choice.
    functionList.Confirm();
    const auto keys = RunArbitraryKeyDialog(Module(), Window(), {SelectedKeys(), ShiftKeys::Offered});
    if (keys) ShowArbitraryKeys(functions, Module(), *keys);
}

// Reads the keys from the entry's text.
model::EtcKey GestureEditDialog::SelectedKeys() const {
    return model::TextToEtcKey(platform::SelectedComboText(Control(IDC_GESTURE_FUNCTION)),
                               platform::LoadText(Module(), IDS_FUNCTION_ARBITRARY_KEY));
}

void GestureEditDialog::OnStrokeClicked() {
    if (manager.IsActive() || request.gestureButton == nullptr) return;
    OutputDebugStringW(request.gestureButton->debugText);
    manager.Arm(request.gestureButton->button);
    ShowStroke(platform::LoadText(Module(), IDS_STROKE_START));
}

void GestureEditDialog::OnOk() {
    model::GestureEntry confirmed;
    confirmed.stroke = platform::WindowText(Control(IDC_GESTURE_STROKE), kMaxFieldText);
    if (confirmed.stroke.empty() || manager.IsActive()) return;
    confirmed.memo = platform::WindowText(Control(IDC_GESTURE_MEMO), kMaxFieldText);
    const HWND functions = Control(IDC_GESTURE_FUNCTION);
    platform::LeaveList(functions);
    const auto function = platform::SelectedComboData(functions);
    if (!function) return;
    const std::wstring functionText = platform::SelectedComboText(functions);
    // An edited stroke may equal another gesture's: docs/kept-behaviour.md.
    if (request.mode == GestureEditMode::Add && IsStrokeTaken(confirmed.stroke)) {
        boxes.Warn(Window(), IDS_GESTURE_REGISTERED);
        return;
    }
    confirmed.function = *function;
    if (confirmed.function == model::kFunctionArbitraryKey) confirmed.etcKey = SelectedKeys();
    request.onConfirmed(confirmed, functionText);
    End(platform::DialogResult::Accepted);
    ClickLeftButton();
}

bool GestureEditDialog::IsStrokeTaken(const std::wstring& stroke) const {
    const auto& gestures = settings.Selected().gestures;
    return std::ranges::find(gestures, stroke, &model::GestureEntry::stroke) != gestures.end();
}

void GestureEditDialog::OnDestroy() {
    platform::NotifyGestureEditEnd();
    // Repaints what the dialog and the trail covered.
    InvalidateRect(GetWindow(Window(), GW_OWNER), nullptr, FALSE);
}

// The line begins where the stroke begins, and follows the cursor until it ends.
void GestureEditDialog::OnTick() {
    const bool wasTracking = manager.IsTracking();
    if (!manager.Tick() || !manager.IsTracking()) return;
    if (wasTracking) {
        trail.DrawTo(manager.Cursor());
    } else {
        trail.StartAt(manager.Cursor());
    }
}

std::int32_t GestureEditDialog::OnGestureNotice(const model::GestureNotice* notice) {
    return platform::AtBoundary(0, [&] {
        static_cast<GestureEditDialog*>(notice->context)->OnNotice(*notice);
        return 0;
    });
}

void GestureEditDialog::OnNotice(const model::GestureNotice& notice) {
    if (!IsOpen()) return;
    switch (notice.kind) {
        case model::GestureNoticeKind::Started:
            trail.Show(Module(), Window());
            ShowStroke(platform::LoadText(Module(), IDS_STROKE_START));
            break;
        case model::GestureNoticeKind::Progress:
            ShowStroke(StrokeText(Module(), notice));
            break;
        case model::GestureNoticeKind::Completed:
        case model::GestureNoticeKind::Cancelled:  // without directions, so the text is empty
            trail.Destroy();
            ShowStroke(StrokeText(Module(), notice));
            break;
    }
}

}  // namespace kvn::gestures
