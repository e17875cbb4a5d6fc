#include "page/page_change.h"

#include <prsht.h>

namespace kvn::page {

void MarkPageChanged(HWND page) {
    SendMessageW(GetParent(page), PSM_CHANGED, reinterpret_cast<WPARAM>(page), 0);
}

}  // namespace kvn::page
