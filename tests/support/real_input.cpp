#include "tests/support/real_input.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

// Keys whose scan code has the prefix that distinguishes them from their twins; without it a right modifier becomes the
// left.
constexpr std::array<WORD, 18> kExtendedKeys{VK_RSHIFT, VK_RCONTROL, VK_RMENU,  VK_LWIN,   VK_RWIN,   VK_APPS,
                                             VK_UP,     VK_DOWN,     VK_LEFT,   VK_RIGHT,  VK_HOME,   VK_END,
                                             VK_PRIOR,  VK_NEXT,     VK_INSERT, VK_DELETE, VK_DIVIDE, VK_NUMLOCK};

void Send(WORD key, DWORD flags) {
    if (std::find(kExtendedKeys.begin(), kExtendedKeys.end(), key) != kExtendedKeys.end()) {
        flags |= KEYEVENTF_EXTENDEDKEY;
    }
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    if (SendInput(1, &input, sizeof input) != 1) throw std::runtime_error("the system accepts no input");
}

}  // namespace

void HoldKey(WORD key) {
    Send(key, 0);
}

void LetGoOfKey(WORD key) {
    Send(key, KEYEVENTF_KEYUP);
}

void PressKey(WORD key) {
    HoldKey(key);
    LetGoOfKey(key);
}

void AwaitInputTaken(HWND window) {
    // Windows sends WM_PAINT only when the thread's input has been handled.
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE);
    Await("the input to be taken", [=] { return !GetUpdateRect(window, nullptr, FALSE); });
}

void BringToFront(HWND window) {
    SetForegroundWindow(window);
    Await("the window in front", [=] { return GetForegroundWindow() == window; });
}

}  // namespace kvn::test
