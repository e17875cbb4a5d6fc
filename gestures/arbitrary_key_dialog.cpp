#include "gestures/arbitrary_key_dialog.h"

#include <imm.h>
#include <winnls32.h>

#include <algorithm>
#include <array>

#include "platform/boundary.h"
#include "platform/combo_box.h"
#include "platform/modal_dialog.h"
#include "platform/subclass.h"
#include "platform/system_library.h"
#include "platform/window_text.h"
#include "resources/resource.h"

namespace kvn::gestures {
namespace {

using model::KeyCode;
using model::KeyNameRow;

using KeyboardState = std::array<BYTE, 256>;

constexpr int kMaxFieldText = 512;
constexpr WPARAM kIgnoredKey = 0xF4;  // Japanese keyboards send it along with the real key
constexpr BYTE kDownNow = 0x80;
constexpr std::size_t kLastStateCode = 254;

// The combo boxes in the order of the keys.
constexpr std::array<int, 3> kInputs{IDC_KEYS_INPUT1, IDC_KEYS_INPUT2, IDC_KEYS_INPUT3};

// A key that is reported without its side, and the codes of its two sides.
struct SidedKey {
    WPARAM key;
    KeyCode left;
    KeyCode right;
};
constexpr std::array<SidedKey, 3> kSidedKeys{
    {{VK_SHIFT, VK_LSHIFT, VK_RSHIFT}, {VK_CONTROL, VK_LCONTROL, VK_RCONTROL}, {VK_MENU, VK_LMENU, VK_RMENU}}};

constexpr wchar_t kInputMethods[] = L"imm32.dll";

// The original procedure of all three edit fields.
WNDPROC previousFieldProcedure = nullptr;

bool IsExcluded(const KeyCaptureRequest& request, KeyCode code) {
    return request.shiftKeys == ShiftKeys::Excluded && model::IsShiftKey(code);
}

// Switches the input method editor on or off for the whole thread, where Windows still does so.
void EnableInputMethod(bool enable) {
    WINNLSEnableIME(nullptr, enable ? TRUE : FALSE);
}

// An input method editor takes every key before the field sees it, and leaves only VK_PROCESSKEY. So the field gets
// none.
void FreeOfInputMethod(HWND combo) {
    const auto associate =
        platform::SystemFunction<decltype(ImmAssociateContextEx)>(kInputMethods, "ImmAssociateContextEx");
    if (associate != nullptr) associate(combo, nullptr, IACE_CHILDREN);
}

HWND EditFieldOf(HWND combo) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    return GetComboBoxInfo(combo, &info) ? info.hwndItem : nullptr;
}

// The name of the key that was pressed. If it is unknown, as on a special keyboard, the name of another key that went
// down with it.
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
    const KeyCaptureRequest& request = *platform::ObjectOf<const KeyCaptureRequest>(field);
    if (key == kIgnoredKey || IsExcluded(request, static_cast<KeyCode>(key))) return;
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

class ArbitraryKeyDialog final : public platform::ModalDialog {
public:
    explicit ArbitraryKeyDialog(const KeyCaptureRequest& captureRequest) : request(captureRequest) {}

    std::optional<model::EtcKey> Run(HINSTANCE module, HWND owner) {
        if (!RunModal(module, IDD_ARBITRARY_KEY, owner)) return std::nullopt;
        return confirmed;
    }

private:
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnInitDialog();
    void OnCommand(int control);
    void OnClear() const;
    void OnOk();
    static void OnDestroy();

    // Fills one combo box with the keys that may be chosen and shows the given one.
    void FillInput(HWND combo, HWND field, KeyCode current) const;

    const KeyCaptureRequest request;
    model::EtcKey confirmed;
};

INT_PTR ArbitraryKeyDialog::OnMessage(UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    switch (message) {
        case WM_INITDIALOG:
            OnInitDialog();
            return FALSE;  // the focus stays where it was put
        case WM_COMMAND:
            OnCommand(LOWORD(wParam));
            return TRUE;
        case WM_SYSCOMMAND:
            if ((wParam & 0xFFF0) != SC_CLOSE) return FALSE;
            PostMessageW(Window(), WM_COMMAND, IDC_KEYS_CANCEL, 0);
            return TRUE;
        case WM_DESTROY:
            OnDestroy();
            return TRUE;
        default:
            return FALSE;
    }
}

void ArbitraryKeyDialog::OnInitDialog() {
    EnableInputMethod(false);
    for (std::size_t i = 0; i < kInputs.size(); ++i) {
        const HWND combo = Control(kInputs[i]);
        const HWND field = EditFieldOf(combo);
        if (field == nullptr) continue;
        FillInput(combo, field, request.keys.codes[i]);
        FreeOfInputMethod(combo);
        previousFieldProcedure = platform::Subclass(field, FieldProcedure, &request);
    }
    SetFocus(Control(kInputs[0]));
}

void ArbitraryKeyDialog::FillInput(HWND combo, HWND field, KeyCode current) const {
    const KeyNameRow* match = nullptr;
    for (const KeyNameRow& row : model::kKeyNameTable) {
        if (IsExcluded(request, row.code)) continue;
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

void ArbitraryKeyDialog::OnCommand(int control) {
    switch (control) {
        case IDC_KEYS_CLEAR:
            return OnClear();
        case IDC_KEYS_OK:
            return OnOk();
        case IDC_KEYS_CANCEL:
        case IDCANCEL:  // the Esc key
            return End(platform::DialogResult::Cancelled);
        default:
            return;
    }
}

void ArbitraryKeyDialog::OnClear() const {
    for (const int input : kInputs) SendMessageW(Control(input), CB_SETCURSEL, 0, 0);
}

void ArbitraryKeyDialog::OnOk() {
    for (std::size_t i = 0; i < kInputs.size(); ++i) {
        confirmed.codes[i] = model::KeyCodeOf(platform::WindowText(Control(kInputs[i]), kMaxFieldText));
    }
    End(platform::DialogResult::Accepted);
}

void ArbitraryKeyDialog::OnDestroy() {
    EnableInputMethod(true);
    InvalidateRect(nullptr, nullptr, TRUE);
}

}  // namespace

std::optional<model::EtcKey> RunArbitraryKeyDialog(HINSTANCE module, HWND owner, const KeyCaptureRequest& request) {
    return ArbitraryKeyDialog(request).Run(module, owner);
}

}  // namespace kvn::gestures
