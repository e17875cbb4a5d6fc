// The shell extension: adds the module's page to a property sheet.
#pragma once

#include <windows.h>

#include <prsht.h>
#include <shobjidl.h>

#include "page/com_object.h"

namespace kvn::page {

class CShellPropSheetExt final : public ComObject<IShellPropSheetExt, IID_IShellPropSheetExt> {
public:
    // Adds the page if the resident service is available. S_OK without a page if it is not; E_OUTOFMEMORY if the page
    // cannot be made; E_FAIL if the shell refuses it.
    HRESULT STDMETHODCALLTYPE AddPages(LPFNADDPROPSHEETPAGE addPage, LPARAM parameter) override;

    // Replaces nothing: S_OK.
    HRESULT STDMETHODCALLTYPE ReplacePage(EXPPS pageId, LPFNADDPROPSHEETPAGE replacePage, LPARAM parameter) override;
};

}  // namespace kvn::page
