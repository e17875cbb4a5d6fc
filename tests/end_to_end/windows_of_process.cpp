#include "tests/end_to_end/windows_of_process.h"

#include "tests/end_to_end/input.h"
#include "tests/end_to_end/story_waiting.h"

namespace kvn::end_to_end {

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
