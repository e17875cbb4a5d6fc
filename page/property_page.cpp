#include "page/property_page.h"

#include <commctrl.h>

#include <memory>

#include "page/current_panel.h"
#include "page/page_change.h"
#include "platform/boundary.h"
#include "platform/module.h"
#include "platform/subclass.h"
#include "resources/resource.h"

namespace kvn::page {
namespace {

#define KVN_WIDE_NAME_OF(name) L## #name
#define KVN_WIDE_NAME(name) KVN_WIDE_NAME_OF(name)
constexpr wchar_t kTemplateName[] = KVN_WIDE_NAME(IDD_PROPERTY_PAGE_NAME);

static_assert(sizeof(void*) == 8, "the module is for 64-bit Windows only");
// The structure without the activation context and the header bitmap that later versions append.
static_assert(sizeof(PROPSHEETPAGEW_V2) == 88);

using PanelPointer = std::shared_ptr<IPropertyPanel>;

void OnInitDialog(HWND page, LPARAM sheetPage) {
    SetWindowLongPtrW(page, DWLP_USER, sheetPage);
    auto pagesOwn = std::make_unique<PanelPointer>(TakeCurrentPanel());
    const PanelPointer panel = *pagesOwn;
    if (panel == nullptr) return;
    SetWindowLongPtrW(page, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(pagesOwn.release()));
    // The window owns its pointer from here on, until WM_NCDESTROY, which the analyzer cannot see.
    panel->OnInitDialog(platform::ThisModule(), page);  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
}

void OnNotify(IPropertyPanel& panel, HWND page, WPARAM wParam, const NMHDR* header) {
    if (header->code == TCN_SELCHANGE) panel.OnTabChanged(page, wParam, header);
    if (header->code != PSN_APPLY) return;
    // An apply that throws has failed too: the sheet must not close with unsaved settings.
    const bool applied = platform::AtBoundary(false, [&] { return panel.OnApply(platform::ThisModule(), page); });
    if (!applied) SetWindowLongPtrW(page, DWLP_MSGRESULT, PSNRET_INVALID_NOCHANGEPAGE);
}

void OnCommand(IPropertyPanel& panel, HWND page, WPARAM wParam, LPARAM lParam) {
    panel.OnCommand(wParam, lParam, page);
    if (panel.OnCommandChanged(page, wParam, lParam)) MarkPageChanged(page);
}

// The messages after WM_INITDIALOG.
INT_PTR ForwardToPanel(IPropertyPanel& panel, HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            panel.OnPaint(page);
            return FALSE;
        case WM_COPYDATA:
            panel.OnCopyData(reinterpret_cast<HWND>(wParam), reinterpret_cast<const COPYDATASTRUCT*>(lParam));
            return TRUE;
        case WM_NOTIFY:
            OnNotify(panel, page, wParam, reinterpret_cast<const NMHDR*>(lParam));
            return TRUE;
        case WM_COMMAND:
            OnCommand(panel, page, wParam, lParam);
            return TRUE;
        case WM_HSCROLL:
            if (panel.OnHScroll(reinterpret_cast<HWND>(lParam))) MarkPageChanged(page);
            return TRUE;
        case WM_CTLCOLORSTATIC:
            return reinterpret_cast<INT_PTR>(
                panel.OnCtlColorStatic(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)));
        default:
            return FALSE;
    }
}

INT_PTR HandleMessage(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CREATE) return TRUE;  // docs/kept-behaviour.md
    if (message == WM_INITDIALOG) {
        OnInitDialog(page, lParam);
        return TRUE;
    }
    // Each page keeps its own panel from its first message to its last, however many pages there are.
    auto* const pagesOwn = platform::ObjectOf<PanelPointer>(page);
    if (pagesOwn == nullptr) return FALSE;
    // The host may destroy the page while one of its dialogs is open, and the call that opened the dialog still needs
    // the panel.
    const PanelPointer panel = *pagesOwn;
    if (message != WM_NCDESTROY) return ForwardToPanel(*panel, page, message, wParam, lParam);
    SetWindowLongPtrW(page, GWLP_USERDATA, 0);
    delete pagesOwn;
    return TRUE;
}

INT_PTR CALLBACK PageProcedure(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    return platform::AtBoundary<INT_PTR>(FALSE, [&] { return HandleMessage(page, message, wParam, lParam); });
}

}  // namespace

HPROPSHEETPAGE CreatePage() {
    PROPSHEETPAGEW_V2 page{};
    page.dwSize = sizeof page;
    page.hInstance = platform::ThisModule();
    page.pszTemplate = kTemplateName;
    page.pfnDlgProc = PageProcedure;
    return CreatePropertySheetPageW(reinterpret_cast<LPCPROPSHEETPAGEW>(&page));
}

}  // namespace kvn::page
