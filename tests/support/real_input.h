// Key presses and clicks as the keyboard and the mouse make them, for the foreground window.
#pragma once

#include <windows.h>

namespace kvn::test {

void PressKey(WORD key);
void HoldKey(WORD key);
void LetKeyGo(WORD key);

// Waits until the window's thread has taken all input that was made so far.
void AwaitInputTaken(HWND window);

// Brings a window of another thread to the front, so that input goes there.
void BringToFront(HWND window);

}  // namespace kvn::test
