// The text of one item of a common control in any process.
#pragma once

#include <windows.h>

#include <array>
#include <string>

#include "tests/support/window_messages.h"

namespace kvn::test {

// The message fills the item's pszText; the other fields choose the text. Longer texts are cut at 2,047 characters.
template <typename Item>
std::wstring ItemText(HWND control, UINT message, int index, Item item) {
    std::array<wchar_t, 2048> text{};
    const WindowMemory textMemory(control, sizeof text);
    textMemory.WriteFrom(text.data());
    item.pszText = reinterpret_cast<wchar_t*>(textMemory.Address());
    item.cchTextMax = static_cast<int>(text.size());
    Exchange(control, message, static_cast<WPARAM>(index), item);
    textMemory.ReadTo(text.data());
    return text.data();
}

}  // namespace kvn::test
