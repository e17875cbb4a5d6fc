#include "service/page/page_search.h"

#include <windows.h>

#include "resources/resource.h"

namespace kvn::service {
namespace {

bool IsPage(HWND window) {
    return GetDlgItem(window, IDC_PAGE_TAB) != nullptr && GetDlgItem(window, IDC_PAGE_EDIT_PROFILE) != nullptr &&
           GetDlgItem(window, IDC_PAGE_PROFILE) != nullptr;
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
