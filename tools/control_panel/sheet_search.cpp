#include "tools/control_panel/sheet_search.h"

#include <string_view>

namespace kvn::control_panel {
namespace {

constexpr std::wstring_view kDialogClass = L"#32770";
constexpr int kMessageBoxText = 0xFFFF;  // the id that a message box gives its text

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

// Both use a buffer on the stack: they are called from an enumeration, which no exception may cross.
bool IsVisibleDialog(HWND window) {
    wchar_t name[16] = L"";
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return IsWindowVisible(window) && name == kDialogClass;
}

bool HasTitle(HWND window, std::wstring_view title) {
    wchar_t text[64] = L"";
    GetWindowTextW(window, text, static_cast<int>(std::size(text)));
    return text == title;
}

struct DialogSearch {
    std::wstring_view sheetTitle;
    bool wantsSheet;
    HWND found;
};

BOOL CALLBACK StopAtDialog(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<DialogSearch*>(parameter);
    if (!IsVisibleDialog(window) || HasTitle(window, search.sheetTitle) != search.wantsSheet) return TRUE;
    search.found = window;
    return FALSE;
}

HWND FindDialog(const wchar_t* sheetTitle, bool wantsSheet) {
    DialogSearch search{sheetTitle, wantsSheet, nullptr};
    EnumThreadWindows(GetCurrentThreadId(), &StopAtDialog, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

struct ControlSearch {
    int id;
    HWND found;
};

BOOL CALLBACK StopAtControl(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<ControlSearch*>(parameter);
    if (GetDlgCtrlID(window) != search.id || !IsWindowVisible(window)) return TRUE;
    search.found = window;
    return FALSE;
}

}  // namespace

HWND FindSheet(const wchar_t* title) {
    return FindDialog(title, true);
}

HWND FindDialogAbove(const wchar_t* sheetTitle) {
    return FindDialog(sheetTitle, false);
}

HWND FindVisibleControl(HWND page, int id) {
    ControlSearch search{id, nullptr};
    EnumChildWindows(page, &StopAtControl, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::wstring DescribeDialog(HWND dialog) {
    std::wstring description = L"\"" + TextOf(dialog) + L"\"";
    if (const HWND text = GetDlgItem(dialog, kMessageBoxText)) description += L", \"" + TextOf(text) + L"\"";
    return description;
}

}  // namespace kvn::control_panel
