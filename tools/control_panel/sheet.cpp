#include "tools/control_panel/sheet.h"

#include "tools/control_panel/host_error.h"

namespace kvn::control_panel {
namespace {

// The page's combo boxes post WM_QUIT when they are destroyed, which would end the thread's next modal loop at once.
void DiscardQuitMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
}

}  // namespace

const wchar_t* SheetTitle() {
    const bool isJapanese = PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_JAPANESE;
    return isJapanese ? L"マウスのプロパティ" : L"Mouse Properties";
}

void ShowSheet(std::vector<Page> pages) {
    std::vector<HPROPSHEETPAGE> handles;
    handles.reserve(pages.size());
    for (const Page& page : pages) handles.push_back(page.Get());

    PROPSHEETHEADERW header{};
    header.dwSize = sizeof(header);
    header.hInstance = GetModuleHandleW(nullptr);
    header.pszCaption = SheetTitle();
    header.nPages = static_cast<UINT>(handles.size());
    header.phpage = handles.data();

    for (Page& page : pages) page.Release();  // the sheet destroys its pages in any case
    const INT_PTR result = PropertySheetW(&header);
    const DWORD error = GetLastError();
    DiscardQuitMessages();
    if (result < 0) throw HostError{L"The property sheet cannot be opened: " + DescribeError(error) + L"."};
}

}  // namespace kvn::control_panel
