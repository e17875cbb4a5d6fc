#include "page/shell_prop_sheet_ext.h"

#include "page/current_panel.h"
#include "page/module_state.h"
#include "page/property_page.h"
#include "platform/boundary.h"

namespace kvn::page {

HRESULT STDMETHODCALLTYPE CShellPropSheetExt::AddPages(LPFNADDPROPSHEETPAGE addPage, LPARAM parameter) {
    return platform::AtBoundary(E_FAIL, [&] {
        if (addPage == nullptr) return E_POINTER;
        IPropertyPanel* panel = CurrentPanel();
        if (panel == nullptr) return E_OUTOFMEMORY;
        if (!panel->CanAddPage(addPage, parameter)) return S_OK;

        const HPROPSHEETPAGE page = CreatePage();
        if (page == nullptr) return E_OUTOFMEMORY;
        HoldModuleForPage();
        if (addPage(page, parameter)) return S_OK;
        ReleaseModuleOfPage();
        DestroyPropertySheetPage(page);
        return E_FAIL;
    });
}

HRESULT STDMETHODCALLTYPE CShellPropSheetExt::ReplacePage(EXPPS /*pageId*/, LPFNADDPROPSHEETPAGE /*replacePage*/,
                                                          LPARAM /*parameter*/) {
    return S_OK;
}

}  // namespace kvn::page
