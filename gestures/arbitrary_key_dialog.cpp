#include "gestures/arbitrary_key_dialog.h"

#include <winnls32.h>

#include <algorithm>
#include <array>

#include "platform/boundary.h"
#include "platform/combo_box.h"
#include "platform/subclass.h"
#include "platform/window_text.h"
#include "resources/resource.h"

namespace kvn::gestures {
namespace {

using model::KeyCode;
using model::KeyNameRow;

using KeyboardState = std::array<BYTE, 256>;

constexpr INT_PTR kAccepted = 1;
constexpr INT_PTR kCancelled = 2;
constexpr int kMaxFieldText = 512;
constexpr WPARAM kIgnoredKey = 0xF4;  // sent by Japanese keyboards together with the key that was meant
constexpr BYTE kDownNow = 0x80;
constexpr std::size_t kLastStateCode = 254;

// The combo boxes in the order of the keys.
constexpr std::array<int, 3> kInputs{IDC_KEYS_INPUT1, IDC_KEYS_INPUT2, IDC_KEYS_INPUT3};

// A key that the keyboard reports without its side, and its two sides.
struct SidedKey {
    WPARAM key;
    KeyCode left;
    KeyCode right;
};
constexpr std::array<SidedKey, 3> kSidedKeys{
    {{VK_SHIFT, VK_LSHIFT, VK_RSHIFT}, {VK_CONTROL, VK_LCONTROL, VK_RCONTROL}, {VK_MENU, VK_LMENU, VK_RMENU}}};

// The open dialog's record, and the procedure that all three edit fields had.
KeyCaptureRecord* openRecord = nullptr;
WNDPROC previousFieldProcedure = nullptr;

bool IsExcluded(KeyCode code) {
    return openRecord != nullptr && (openRecord->excludeShift & 1U) != 0 && model::IsShiftKey(code);
}

HWND EditFieldOf(HWND combo) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    return GetComboBoxInfo(combo, &info) ? info.hwndItem : nullptr;
}

// The name of the key that was pressed. An unknown one, such as a key of a special keyboard, takes the name of another
// key that went down together with it.
const wchar_t* NameOfPressedKey(WPARAM key, const KeyboardState& state) {
    for (const SidedKey& sided : kSidedKeys) {
        if (sided.key != key) continue;
        const bool isLeft = (state[static_cast<std::size_t>(sided.left)] & kDownNow) != 0;
        return model::KeyNameOf(isLeft ? sided.left : sided.right);
    }
    if (const wchar_t* name = model::KeyNameOf(static_cast<KeyCode>(key))) return name;
    const auto end = state.begin() + kLastStateCode + 1;
    const auto down = std::find(state.begin(), end, kDownNow);
    return down == end ? nullptr : model::KeyNameOf(static_cast<KeyCode>(down - state.begin()));
}

void OnKeyPressed(HWND field, WPARAM key) {
    if (key == kIgnoredKey || IsExcluded(static_cast<KeyCode>(key))) return;
    KeyboardState state{};
    GetKeyboardState(state.data());
    const wchar_t* name = NameOfPressedKey(key, state);
    SetWindowTextW(field, name == nullptr ? L"" : name);
    SendMessageW(field, EM_SETSEL, 0, -1);
}

LRESULT CALLBACK FieldProcedure(HWND field, UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr LRESULT kSwallowed = 1;
    return platform::AtBoundary<LRESULT>(0, [&]() -> LRESULT {
        switch (message) {
            case WM_KEYDOWN:
            case WM_SYSKEYDOWN:
                OnKeyPressed(field, wParam);
                return kSwallowed;
            case WM_CHAR:
                return kSwallowed;
            default:
                return CallWindowProcW(previousFieldProcedure, field, message, wParam, lParam);
        }
    });
}

// Fills one combo box with the keys that may be chosen and shows the given one.
void FillInput(HWND combo, HWND field, KeyCode current) {
    const KeyNameRow* match = nullptr;
    for (const KeyNameRow& row : model::KeyNameTable) {
        if (IsExcluded(row.code)) continue;
        if (row.code == current) match = &row;
        if (row.listed) platform::AddComboItem(combo, row.name, row.code);
    }
    if (match == nullptr) return;
    if (match->listed) {
        platform::SelectComboData(combo, match->code);
    } else {
        SetWindowTextW(field, match->name);
    }
}

BOOL OnInitDialog(HWND dialog) {
    WINNLSEnableIME(dialog, FALSE);
    for (std::size_t i = 0; i < kInputs.size(); ++i) {
        const HWND combo = GetDlgItem(dialog, kInputs[i]);
        const HWND field = EditFieldOf(combo);
        if (field == nullptr) continue;
        FillInput(combo, field, openRecord->keys.codes[i]);
        previousFieldProcedure = platform::Subclass(field, FieldProcedure, openRecord);
    }
    SetFocus(GetDlgItem(dialog, kInputs[0]));
    return FALSE;
}

void OnClear(HWND dialog) {
    for (const int input : kInputs) SendDlgItemMessageW(dialog, input, CB_SETCURSEL, 0, 0);
    openRecord->keys = {};
}

void OnOk(HWND dialog) {
    for (std::size_t i = 0; i < kInputs.size(); ++i) {
        const std::wstring text = platform::WindowText(GetDlgItem(dialog, kInputs[i]), kMaxFieldText);
        openRecord->keys.codes[i] = model::KeyCodeOf(text);
    }
    EndDialog(dialog, kAccepted);
}

void OnCommand(HWND dialog, int control) {
    switch (control) {
        case IDC_KEYS_CLEAR:
            return OnClear(dialog);
        case IDC_KEYS_OK:
            return OnOk(dialog);
        case IDC_KEYS_CANCEL:
        case IDCANCEL:  // the Esc key
            EndDialog(dialog, kCancelled);
            return;
        default:
            return;
    }
}

void OnDestroy(HWND dialog) {
    WINNLSEnableIME(dialog, TRUE);
    InvalidateRect(nullptr, nullptr, TRUE);
}

BOOL HandleMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            openRecord = reinterpret_cast<KeyCaptureRecord*>(lParam);
            return OnInitDialog(dialog);
        case WM_COMMAND:
            OnCommand(dialog, LOWORD(wParam));
            return TRUE;
        case WM_SYSCOMMAND:
            if ((wParam & 0xFFF0) != SC_CLOSE) return FALSE;
            PostMessageW(dialog, WM_COMMAND, IDC_KEYS_CANCEL, 0);
            return TRUE;
        case WM_DESTROY:
            OnDestroy(dialog);
            return TRUE;
        default:
            return FALSE;
    }
}

INT_PTR CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    return platform::AtBoundary<INT_PTR>(FALSE, [&] { return HandleMessage(dialog, message, wParam, lParam); });
}

}  // namespace

bool RunArbitraryKeyDialog(HINSTANCE module, KeyCaptureRecord& record) {
    return DialogBoxParamW(module, MAKEINTRESOURCEW(IDD_ARBITRARY_KEY), record.origin, DialogProcedure,
                           reinterpret_cast<LPARAM>(&record)) == kAccepted;
}

}  // namespace kvn::gestures
