#include "tests/support/tab_contents.h"

#include <commctrl.h>

#include <array>

#include "tests/support/window_messages.h"

namespace kvn::test {
namespace {

std::wstring TextOfTab(HWND tabs, int index) {
    std::array<wchar_t, 64> text{};
    const WindowMemory textMemory(tabs, sizeof text);
    textMemory.WriteFrom(text.data());
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = reinterpret_cast<wchar_t*>(textMemory.Address());
    item.cchTextMax = static_cast<int>(text.size());
    Exchange(tabs, TCM_GETITEMW, static_cast<WPARAM>(index), item);
    textMemory.ReadTo(text.data());
    return text.data();
}

}  // namespace

std::vector<std::wstring> TabTextsOf(HWND tabs) {
    const auto count = static_cast<int>(Send(tabs, TCM_GETITEMCOUNT));
    std::vector<std::wstring> texts;
    for (int index = 0; index < count; ++index) texts.push_back(TextOfTab(tabs, index));
    return texts;
}

RECT PlaceOfTab(HWND tabs, int index) {
    return Exchange(tabs, TCM_GETITEMRECT, static_cast<WPARAM>(index), RECT{});
}

}  // namespace kvn::test
