// Key presses and clicks as the keyboard and the mouse make them, for the foreground window.
#pragma once

#include <windows.h>

namespace kvn::test {

// Virtual keys; VK_LSHIFT to VK_RMENU mean the key on that side.
void HoldKey(WORD key);
void LetGoOfKey(WORD key);
void PressKey(WORD key);

// Waits until the window's thread has taken all input that was made so far.
void AwaitInputTaken(HWND window);

// Brings a window of another thread to the front, so that input goes there.
void BringToFront(HWND window);

}  // namespace kvn::test
