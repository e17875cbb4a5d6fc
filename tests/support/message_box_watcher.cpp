#include "tests/support/message_box_watcher.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "tests/support/waiting.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

// Controls of Windows' own message-box template.
constexpr int kIconControl = 1088;
constexpr int kTextControl = 0xFFFF;

struct IconRow {
    LPCWSTR name;
    UINT style;
};
const std::array<IconRow, 4> kIcons{{{IDI_EXCLAMATION, MB_ICONEXCLAMATION},
                                     {IDI_ASTERISK, MB_ICONINFORMATION},
                                     {IDI_QUESTION, MB_ICONQUESTION},
                                     {IDI_HAND, MB_ICONERROR}}};

bool IsMessageBox(HWND window) {
    return ClassOf(window) == kDialogClass && GetDlgItem(window, kIconControl) != nullptr &&
           GetDlgItem(window, kTextControl) != nullptr;
}

UINT IconOf(HWND box) {
    const LRESULT icon = SendDlgItemMessageW(box, kIconControl, STM_GETICON, 0, 0);
    for (const IconRow& row : kIcons) {
        if (icon != 0 && icon == reinterpret_cast<LRESULT>(LoadIconW(nullptr, row.name))) return row.style;
    }
    return 0;
}

int LeftOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place.left;
}

std::vector<int> ButtonsOf(HWND box) {
    std::vector<HWND> buttons;
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (ClassOf(child) == L"Button" && IsWindowVisible(child)) buttons.push_back(child);
    }
    std::sort(buttons.begin(), buttons.end(), [](HWND a, HWND b) { return LeftOf(a) < LeftOf(b); });
    std::vector<int> ids;
    for (const HWND button : buttons) ids.push_back(GetDlgCtrlID(button));
    return ids;
}

}  // namespace

HWND OpenMessageBox() {
    return FindTopLevelWindow([](HWND window) { return IsWindowVisible(window) && IsMessageBox(window); });
}

std::wstring TextOfMessageBox(HWND box) {
    return TextOf(GetDlgItem(box, kTextControl));
}

MessageBoxSeen AnswerMessageBox(const std::string& expected, int button) {
    const HWND box = Await("the message box " + expected, OpenMessageBox);
    MessageBoxSeen seen{TextOf(box), TextOfMessageBox(box), IconOf(box), ButtonsOf(box), GetWindow(box, GW_OWNER)};
    const HWND answer = GetDlgItem(box, button);
    if (answer == nullptr) throw std::runtime_error("the message box " + expected + " lacks the button to press");
    PostMessageW(answer, BM_CLICK, 0, 0);
    Await("the end of the message box " + expected, [=] { return !IsWindow(box); });
    return seen;
}

}  // namespace kvn::test
