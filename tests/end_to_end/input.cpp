#include "tests/end_to_end/input.h"

#include <array>
#include <iterator>

#include "tests/end_to_end/story_waiting.h"

namespace kvn::end_to_end {
namespace {

void Inject(INPUT input) {
    if (SendInput(1, &input, sizeof input) != 1) throw StoryError("the system accepts no input");
}

void InjectCharacter(wchar_t character, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = character;
    input.ki.dwFlags = flags | KEYEVENTF_UNICODE;
    Inject(input);
}

struct ButtonRow {
    DWORD down;
    DWORD up;
    DWORD data;
};

// In the order of MouseButton.
constexpr std::array<ButtonRow, 5> kButtons{{{MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, 0},
                                             {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP, 0},
                                             {MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP, 0},
                                             {MOUSEEVENTF_XDOWN, MOUSEEVENTF_XUP, XBUTTON1},
                                             {MOUSEEVENTF_XDOWN, MOUSEEVENTF_XUP, XBUTTON2}}};

const ButtonRow& RowOf(MouseButton button) {
    return kButtons[static_cast<std::size_t>(button)];
}

void InjectMouse(DWORD flags, DWORD data) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.mouseData = data;
    Inject(input);
}

void Click() {
    HoldButton(MouseButton::Left);
    LetGoOfButton(MouseButton::Left);
}

}  // namespace

void MoveCursorTo(POINT point) {
    if (!SetCursorPos(point.x, point.y)) throw StoryError("the cursor cannot be moved");
}

POINT Cursor() {
    POINT point{};
    if (!GetCursorPos(&point)) throw StoryError("the cursor cannot be found");
    return point;
}

void HoldButton(MouseButton button) {
    InjectMouse(RowOf(button).down, RowOf(button).data);
}

void LetGoOfButton(MouseButton button) {
    InjectMouse(RowOf(button).up, RowOf(button).data);
}

void ClickAt(POINT point) {
    MoveCursorTo(point);
    Click();
}

void DoubleClickAt(POINT point) {
    MoveCursorTo(point);
    Click();
    Click();
}

void TypeText(const std::wstring& text) {
    for (const wchar_t character : text) {
        InjectCharacter(character, 0);
        InjectCharacter(character, KEYEVENTF_KEYUP);
    }
}

void PressTogether(std::initializer_list<WORD> keys) {
    for (const WORD key : keys) HoldKey(key);
    for (auto key = std::rbegin(keys); key != std::rend(keys); ++key) LetGoOfKey(*key);
}

}  // namespace kvn::end_to_end
