// The user's hands: a real mouse and keyboard, as far as the foreground window can tell.
#pragma once

#include <windows.h>

#include <initializer_list>

namespace kvn::end_to_end {

// Moves the cursor there (in screen coordinates) and clicks the left button.
void ClickAt(POINT point);

// Virtual keys; VK_LSHIFT to VK_RMENU mean the key on that side.
void HoldKey(WORD key);
void LetGoOfKey(WORD key);
void PressKey(WORD key);
// All keys go down in this order and up again in the reverse one.
void PressTogether(std::initializer_list<WORD> keys);

}  // namespace kvn::end_to_end
