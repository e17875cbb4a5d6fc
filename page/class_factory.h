// The class factory of the module's one creatable class.
#pragma once

#include "page/com_object.h"

namespace kvn::page {

class CClassFactory final : public ComObject<IClassFactory, IID_IClassFactory> {
public:
    // Makes a CShellPropSheetExt and, with it, the panel of its page.
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID interfaceId, void** object) override;

    // Not supported: E_NOTIMPL.
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;
};

}  // namespace kvn::page
