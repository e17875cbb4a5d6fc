#include "tests/support/window_names.h"

#include "tests/support/narrow_text.h"

namespace kvn::test {

std::wstring ClassOf(HWND window) {
    wchar_t name[64]{};
    GetClassNameW(window, name, 64);
    return name;
}

std::wstring TitleOf(HWND window) {
    wchar_t title[256]{};
    InternalGetWindowText(window, title, 256);
    return title;
}

std::string Describe(HWND window) {
    return Narrow(ClassOf(window)) + " \"" + Narrow(TitleOf(window)) + "\" (" + std::to_string(GetDlgCtrlID(window)) +
           ")";
}

}  // namespace kvn::test
