#include "platform/combo_box.h"

#include <algorithm>
#include <utility>

#include "platform/device_context.h"

namespace kvn::platform {
namespace {

int Send(HWND combo, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return static_cast<int>(SendMessageW(combo, message, wParam, lParam));
}

std::wstring ComboText(HWND combo, int index) {
    const int length = Send(combo, CB_GETLBTEXTLEN, static_cast<WPARAM>(index));
    if (length <= 0) return {};
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    Send(combo, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    return text;
}

}  // namespace

void AddComboItem(HWND combo, const std::wstring& text, int data) {
    const int index = Send(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    if (index >= 0) Send(combo, CB_SETITEMDATA, static_cast<WPARAM>(index), data);
}

std::optional<int> ComboData(HWND combo, int index) {
    if (index < 0) return std::nullopt;
    return Send(combo, CB_GETITEMDATA, static_cast<WPARAM>(index));
}

std::optional<int> SelectedComboData(HWND combo) {
    return ComboData(combo, Send(combo, CB_GETCURSEL));
}

std::wstring SelectedComboText(HWND combo) {
    const int index = Send(combo, CB_GETCURSEL);
    return index < 0 ? std::wstring() : ComboText(combo, index);
}

void WidenDropList(HWND combo) {
    const WindowDeviceContext context(combo);
    if (!context) return;
    const SelectedObject font(context.Get(), reinterpret_cast<HFONT>(SendMessageW(combo, WM_GETFONT, 0, 0)));
    LONG longest = 0;
    for (int index = Send(combo, CB_GETCOUNT); index-- > 0;) {
        const std::wstring text = ComboText(combo, index);
        SIZE size{};
        GetTextExtentPoint32W(context.Get(), text.c_str(), static_cast<int>(text.size()), &size);
        longest = std::max(longest, size.cx);
    }
    // Besides the text, a list has a scroll bar, a frame, and a margin as wide as the frame.
    const int width = longest + GetSystemMetrics(SM_CXVSCROLL) + 4 * GetSystemMetrics(SM_CXEDGE);
    Send(combo, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(std::min(width, GetSystemMetrics(SM_CXSCREEN))));
}

std::optional<int> FindComboData(HWND combo, int data) {
    // Asks the list directly, since the combo box would forward each message to it.
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (!GetComboBoxInfo(combo, &info)) return std::nullopt;
    const int count = Send(info.hwndList, LB_GETCOUNT);
    for (int index = 0; index < count; ++index) {
        if (Send(info.hwndList, LB_GETITEMDATA, static_cast<WPARAM>(index)) == data) return index;
    }
    return std::nullopt;
}

void SelectComboData(HWND combo, int data) {
    const auto index = FindComboData(combo, data);
    Send(combo, CB_SETCURSEL, index ? static_cast<WPARAM>(*index) : static_cast<WPARAM>(-1));
}

// Restoring the entry may move the focus and so cause another cancellation, which finds nothing to restore.
bool OpenedList::OnNotification(HWND combo, UINT notification) {
    if (notification == CBN_DROPDOWN) indexBefore = Send(combo, CB_GETCURSEL);
    const bool isOver = notification == CBN_SELENDOK || notification == CBN_SELENDCANCEL || notification == CBN_CLOSEUP;
    if (!isOver) return false;
    const auto before = std::exchange(indexBefore, std::nullopt);
    if (notification == CBN_SELENDOK || !before || *before == Send(combo, CB_GETCURSEL)) return false;
    Send(combo, CB_SETCURSEL, static_cast<WPARAM>(*before));
    return true;
}

void LeaveList(HWND combo) {
    if (Send(combo, CB_GETDROPPEDSTATE) != 0) Send(combo, CB_SHOWDROPDOWN, FALSE);
}

void ReplaceComboText(HWND combo, int index, const std::wstring& text) {
    const auto position = static_cast<WPARAM>(index);
    const bool wasSelected = Send(combo, CB_GETCURSEL) == index;
    const int data = Send(combo, CB_GETITEMDATA, position);
    Send(combo, CB_DELETESTRING, position);
    Send(combo, CB_INSERTSTRING, position, reinterpret_cast<LPARAM>(text.c_str()));
    Send(combo, CB_SETITEMDATA, position, data);
    if (wasSelected) Send(combo, CB_SETCURSEL, position);
}

}  // namespace kvn::platform
