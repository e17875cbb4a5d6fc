#include "tests/support/window_search.h"

#include "tests/support/window_messages.h"

namespace kvn::test {
namespace {

using Condition = std::function<bool(HWND)>;

struct Search {
    DWORD processId;
    const Condition& condition;
    HWND found;
};

BOOL CALLBACK Examine(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != search.processId || !search.condition(window)) return TRUE;
    search.found = window;
    return FALSE;
}

BOOL CALLBACK CollectDialog(HWND window, LPARAM parameter) {
    if (IsWindowVisible(window) && ClassOf(window) == kDialogClass) {
        reinterpret_cast<std::vector<HWND>*>(parameter)->push_back(window);
    }
    return TRUE;
}

}  // namespace

std::wstring TextOf(HWND window) {
    const auto length = static_cast<std::size_t>(Send(window, WM_GETTEXTLENGTH));
    std::wstring text(length + 1, L'\0');
    const LRESULT copied = Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(copied));
    return text;
}

HWND FindTopLevelWindow(const Condition& condition) {
    return FindTopLevelWindowOf(GetCurrentProcessId(), condition);
}

HWND FindTopLevelWindowOf(DWORD processId, const Condition& condition) {
    Search search{processId, condition, nullptr};
    EnumWindows(Examine, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND FindChildWindow(HWND parent, const Condition& condition) {
    HWND child = GetWindow(parent, GW_CHILD);
    while (child != nullptr && !condition(child)) child = GetWindow(child, GW_HWNDNEXT);
    return child;
}

HWND FocusOf(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) ? info.hwndFocus : nullptr;
}

std::vector<HWND> OpenDialogsOf(DWORD threadId) {
    std::vector<HWND> dialogs;
    EnumThreadWindows(threadId, CollectDialog, reinterpret_cast<LPARAM>(&dialogs));
    return dialogs;
}

}  // namespace kvn::test
