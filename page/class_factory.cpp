#include "page/class_factory.h"

#include <new>

#include "page/current_panel.h"
#include "page/shell_prop_sheet_ext.h"
#include "platform/memory_reserve.h"

namespace kvn::page {

HRESULT STDMETHODCALLTYPE CClassFactory::CreateInstance(IUnknown* outer, REFIID interfaceId, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    if (interfaceId != IID_IShellPropSheetExt && interfaceId != IID_IUnknown) return E_NOINTERFACE;

    platform::KeepMemoryReserve();
    auto* extension = new (std::nothrow) CShellPropSheetExt;
    if (extension == nullptr) return E_OUTOFMEMORY;
    MakeCurrentPanel();
    extension->AddRef();
    *object = static_cast<IShellPropSheetExt*>(extension);
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CClassFactory::LockServer(BOOL /*lock*/) {
    return E_NOTIMPL;
}

}  // namespace kvn::page
