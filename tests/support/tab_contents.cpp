#include "tests/support/tab_contents.h"

#include <commctrl.h>

#include "tests/support/item_text.h"
#include "tests/support/window_messages.h"

namespace kvn::test {
namespace {

std::wstring TextOfTab(HWND tabs, int index) {
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    return ItemText(tabs, TCM_GETITEMW, index, item);
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
