#include "tests/end_to_end/windows_of_process.h"

#include "tests/end_to_end/input.h"
#include "tests/end_to_end/story_waiting.h"

namespace kvn::end_to_end {
namespace {

struct TopLevelSearch {
    DWORD processId;
    const std::function<bool(HWND)>& isWanted;
    HWND found;
};

BOOL CALLBACK StopAtWanted(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<TopLevelSearch*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != search.processId || !search.isWanted(window)) return TRUE;
    search.found = window;
    return FALSE;
}

}  // namespace

HWND FindTopLevel(DWORD processId, const std::function<bool(HWND)>& isWanted) {
    TopLevelSearch search{processId, isWanted, nullptr};
    EnumWindows(&StopAtWanted, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND FocusOf(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) ? info.hwndFocus : nullptr;
}

RECT ScreenRectangle(HWND window) {
    RECT rectangle{};
    if (!GetWindowRect(window, &rectangle)) throw StoryError("a window that is to be used has gone");
    return rectangle;
}

void Click(HWND window) {
    ClickAt(MiddleOf(ScreenRectangle(window)));
}

POINT MiddleOf(const RECT& area) {
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

}  // namespace kvn::end_to_end
