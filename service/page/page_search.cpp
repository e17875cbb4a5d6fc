#include "service/page/page_search.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "resources/resource.h"

namespace kvn::service {
namespace {

struct ControlRow {
    int id;
    std::wstring_view className;
};

// Dialogs of other programs use these numbers too.
constexpr std::array<ControlRow, 3> kControlsOfPage{
    {{IDC_PAGE_TAB, WC_TABCONTROLW}, {IDC_PAGE_EDIT_PROFILE, WC_BUTTONW}, {IDC_PAGE_PROFILE, WC_COMBOBOXW}}};

bool IsOfClass(HWND window, std::wstring_view className) {
    std::array<wchar_t, 32> name{};  // a longer one is cut, and equals none of the page's
    const int length = GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return std::wstring_view(name.data(), static_cast<std::size_t>(length)) == className;
}

bool IsPage(HWND window) {
    return std::ranges::all_of(kControlsOfPage, [window](const ControlRow& row) {
        return IsOfClass(GetDlgItem(window, row.id), row.className);
    });
}

// FALSE ends a search.
BOOL CALLBACK Judge(HWND window, LPARAM found) {
    bool& isFound = *reinterpret_cast<bool*>(found);
    isFound = IsPage(window);
    return isFound ? FALSE : TRUE;
}

BOOL CALLBACK JudgeWithChildren(HWND topLevel, LPARAM found) {
    if (Judge(topLevel, found)) EnumChildWindows(topLevel, Judge, found);
    return *reinterpret_cast<const bool*>(found) ? FALSE : TRUE;
}

}  // namespace

bool IsPageOpen() {
    bool isFound = false;
    EnumWindows(JudgeWithChildren, reinterpret_cast<LPARAM>(&isFound));
    return isFound;
}

}  // namespace kvn::service
