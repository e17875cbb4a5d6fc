#include "service/input/key_sending.h"

#include <algorithm>

namespace kvn::service {
namespace {

// Keys whose scan code has the prefix that distinguishes them from their twins. The right Shift key is one of them:
// without the flag some systems take it for the left one.
constexpr std::array<WORD, 19> kExtendedKeys{
    VK_PRIOR,  VK_NEXT,   VK_END,     VK_HOME,  VK_LEFT, VK_UP,   VK_RIGHT, VK_DOWN,   VK_SNAPSHOT, VK_INSERT,
    VK_DELETE, VK_DIVIDE, VK_NUMLOCK, VK_RMENU, VK_LWIN, VK_RWIN, VK_APPS,  VK_RSHIFT, VK_RCONTROL};

struct ScanCodeRow {
    WORD key;
    WORD scanCode;
};

// Keys whose scan code the layout's table lacks: for Print Screen it has the code of Alt + Print Screen, and for Pause
// none.
constexpr std::array<ScanCodeRow, 2> kOwnScanCodes{{{VK_SNAPSHOT, 0x37}, {VK_PAUSE, 0x45}}};

struct ButtonRow {
    WORD button;
    DWORD down;
    DWORD up;
    DWORD data;
};

constexpr std::array<ButtonRow, 5> kButtons{{
    {VK_LBUTTON, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, 0},
    {VK_RBUTTON, MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP, 0},
    {VK_MBUTTON, MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP, 0},
    {VK_XBUTTON1, MOUSEEVENTF_XDOWN, MOUSEEVENTF_XUP, XBUTTON1},
    {VK_XBUTTON2, MOUSEEVENTF_XDOWN, MOUSEEVENTF_XUP, XBUTTON2},
}};

const ButtonRow& RowOf(WORD button) {
    const auto row = std::ranges::find(kButtons, button, &ButtonRow::button);
    return row == kButtons.end() ? kButtons.front() : *row;
}

struct KeyRange {
    WORD first;
    WORD last;
};

// Keys that no layout moves.
constexpr std::array<KeyRange, 5> kFixedKeys{
    {{VK_BACK, VK_MENU}, {VK_ESCAPE, VK_ESCAPE}, {VK_SPACE, VK_HELP}, {VK_LWIN, VK_SCROLL}, {VK_LSHIFT, VK_RMENU}}};

// The layout of the program in front, which takes calls to Windows to find.
HKL LayoutOf(WORD key) {
    const bool isFixed =
        std::ranges::any_of(kFixedKeys, [=](const KeyRange& range) { return key >= range.first && key <= range.last; });
    return GetKeyboardLayout(isFixed ? 0 : GetWindowThreadProcessId(GetForegroundWindow(), nullptr));
}

WORD ScanCodeOf(WORD key) {
    const auto own = std::ranges::find(kOwnScanCodes, key, &ScanCodeRow::key);
    if (own != kOwnScanCodes.end()) return own->scanCode;
    return static_cast<WORD>(MapVirtualKeyExW(key, MAPVK_VK_TO_VSC, LayoutOf(key)) & 0xFF);
}

}  // namespace

WORD PhysicalButton(WORD button) {
    if (GetSystemMetrics(SM_SWAPBUTTON) == 0) return button;
    if (button == VK_LBUTTON) return VK_RBUTTON;
    return button == VK_RBUTTON ? WORD{VK_LBUTTON} : button;
}

bool IsMouseButton(WORD key) {
    return std::ranges::find(kButtons, key, &ButtonRow::button) != kButtons.end();
}

void InputBatch::KeyDown(WORD key) {
    AddKey(key, 0);
}

void InputBatch::KeyUp(WORD key) {
    AddKey(key, KEYEVENTF_KEYUP);
}

void InputBatch::ButtonDown(WORD button) {
    const ButtonRow& row = RowOf(button);
    AddMouse(row.down, static_cast<std::int32_t>(row.data));
}

void InputBatch::ButtonUp(WORD button) {
    const ButtonRow& row = RowOf(button);
    AddMouse(row.up, static_cast<std::int32_t>(row.data));
}

void InputBatch::Wheel(std::int32_t amount) {
    AddMouse(MOUSEEVENTF_WHEEL, amount);
}

void InputBatch::HorizontalWheel(std::int32_t amount) {
    AddMouse(MOUSEEVENTF_HWHEEL, amount);
}

void InputBatch::AddKey(WORD key, DWORD flags) {
    const bool isExtended = std::ranges::find(kExtendedKeys, key) != kExtendedKeys.end();
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = ScanCodeOf(key);
    input.ki.dwFlags = flags | (isExtended ? DWORD{KEYEVENTF_EXTENDEDKEY} : 0);
    Add(input);
}

void InputBatch::AddMouse(DWORD flags, std::int32_t data) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.mouseData = static_cast<DWORD>(data);
    Add(input);
}

void InputBatch::Add(const INPUT& input) {
    if (count == inputs.size()) areAllSent = Send();
    inputs[count++] = input;
}

bool InputBatch::Send() {
    const auto sent = count == 0 ? 0 : SendInput(static_cast<UINT>(count), inputs.data(), sizeof(INPUT));
    const bool isSent = areAllSent && sent == count;
    count = 0;
    areAllSent = true;
    return isSent;
}

}  // namespace kvn::service
