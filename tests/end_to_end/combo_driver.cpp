#include "tests/end_to_end/combo_driver.h"

#include "tests/end_to_end/input.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/support/combo_contents.h"

namespace kvn::end_to_end {
namespace {

constexpr wchar_t kListClass[] = L"ComboLBox";

// A click waits its turn in the queue of the window's thread; the focus shows that it is over for the window.
void ClickAndFocus(HWND control) {
    Click(control);
    WaitFor("the focus on " + Describe(control), [=] { return FocusOf(control) == control; });
}

HWND OpenList(HWND combo) {
    DWORD processId = 0;
    GetWindowThreadProcessId(combo, &processId);
    ClickAndFocus(combo);
    return WaitFor("the list of " + Describe(combo), [=] {
        return FindTopLevelWindowOf(
            processId, [](HWND window) { return IsWindowVisible(window) && ClassOf(window) == kListClass; });
    });
}

}  // namespace

void ChooseByMouse(HWND combo, int data) {
    const int index = test::IndexOfData(combo, data);
    if (index < 0) throw StoryError(Describe(combo) + " does not offer " + std::to_string(data));
    ChooseEntryByMouse(combo, index);
}

void ChooseEntryByMouse(HWND combo, int index) {
    const HWND list = OpenList(combo);
    RECT visible{};
    GetClientRect(list, &visible);
    RECT entry{};
    const auto measure = [&] {
        Send(list, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&entry));
        return entry.top >= 0 && entry.bottom <= visible.bottom;
    };
    // Scrolled by a message: how far a turn of the wheel scrolls is the user's setting.
    if (!measure()) Send(list, LB_SETTOPINDEX, static_cast<WPARAM>(index));
    if (!measure()) throw StoryError("an entry of " + Describe(combo) + " cannot be shown");
    POINT middle = MiddleOf(entry);
    MapWindowPoints(list, nullptr, &middle, 1);
    ClickAt(middle);
    WaitFor("the list to close", [=] { return !IsWindowVisible(list); });
}

}  // namespace kvn::end_to_end
