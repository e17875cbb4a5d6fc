#include "tests/support/real_input.h"

#include <algorithm>
#include <array>

#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

// Without the flag Windows takes the right one of a pair for the left one.
constexpr std::array<WORD, 12> kExtendedKeys{VK_RCONTROL, VK_RMENU, VK_RSHIFT, VK_LWIN, VK_RWIN, VK_UP,
                                             VK_DOWN,     VK_LEFT,  VK_RIGHT,  VK_HOME, VK_END,  VK_DELETE};

void Send(WORD key, DWORD flags) {
    if (std::find(kExtendedKeys.begin(), kExtendedKeys.end(), key) != kExtendedKeys.end()) {
        flags |= KEYEVENTF_EXTENDEDKEY;
    }
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    SendInput(1, &input, sizeof input);
}

}  // namespace

void HoldKey(WORD key) {
    Send(key, 0);
}

void LetKeyGo(WORD key) {
    Send(key, KEYEVENTF_KEYUP);
}

void PressKey(WORD key) {
    HoldKey(key);
    LetKeyGo(key);
}

void AwaitInputTaken(HWND window) {
    // Windows has a window painted only when its thread's input has been taken.
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE);
    Await("the input to be taken", [=] { return !GetUpdateRect(window, nullptr, FALSE); });
}

void BringToFront(HWND window) {
    SetForegroundWindow(window);
    Await("the window in front", [=] { return GetForegroundWindow() == window; });
}

}  // namespace kvn::test
