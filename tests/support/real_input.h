// Key presses and clicks as from the keyboard and the mouse, for the foreground window.
#pragma once

#include <windows.h>

namespace kvn::test {

// Virtual keys; VK_LSHIFT to VK_RMENU mean the key on that side.
void HoldKey(WORD key);
void LetGoOfKey(WORD key);
void PressKey(WORD key);

// Waits until the window's thread has handled all input so far.
void AwaitInputTaken(HWND window);

// Brings a window of another thread to the front, so that input goes there.
void BringToFront(HWND window);

}  // namespace kvn::test
