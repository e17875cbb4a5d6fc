// The user's hands: the foreground window cannot distinguish them from a real mouse and keyboard.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>

#include "tests/support/real_input.h"

namespace kvn::end_to_end {

enum class MouseButton { Left, Right, Wheel, Button4, Button5 };

// In screen coordinates.
void MoveCursorTo(POINT point);
POINT Cursor();

void HoldButton(MouseButton button);
void LetGoOfButton(MouseButton button);

// Moves the cursor there and clicks the left button, once or twice.
void ClickAt(POINT point);
void DoubleClickAt(POINT point);

using test::HoldKey;
using test::LetGoOfKey;
using test::PressKey;
// All keys go down in this order and up in the reverse order.
void PressTogether(std::initializer_list<WORD> keys);
// Types any characters, with any keyboard layout.
void TypeText(const std::wstring& text);

// A key that is held down for a while.
class HeldKey {
public:
    explicit HeldKey(WORD keyToHold) : key(keyToHold) { HoldKey(key); }
    ~HeldKey() { LetGoOfKey(key); }
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;

private:
    WORD key;
};

}  // namespace kvn::end_to_end
