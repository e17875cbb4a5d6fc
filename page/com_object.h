// The reference counting that the module's two COM classes share.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include "page/module_state.h"

namespace kvn::page {

// A COM object of one interface besides IUnknown. Its count starts at 0; every reference also counts for the server.
template <typename Interface, const IID& kInterfaceId>
class ComObject : public Interface {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (interfaceId != kInterfaceId && interfaceId != IID_IUnknown) return E_NOINTERFACE;
        *object = static_cast<Interface*>(this);
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override {
        AddServerReference();
        return ++references;
    }

    ULONG STDMETHODCALLTYPE Release() override {
        ReleaseServerReference();
        if (--references != 0) return references;
        delete this;
        return 0;
    }

    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

protected:
    ComObject() = default;
    virtual ~ComObject() = default;

private:
    ULONG references = 0;
};

}  // namespace kvn::page
