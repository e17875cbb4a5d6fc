// The smallest DLL that COM loads: a class factory that makes nothing. Built like the page's DLL, it shows the cost of
// a DLL that does no work.
#include <windows.h>

#include <unknwn.h>

namespace {

class EmptyFactory final : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
        const bool isKnown = interfaceId == IID_IClassFactory || interfaceId == IID_IUnknown;
        *object = isKnown ? this : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    // The only object lives as long as the DLL is loaded.
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* /*outer*/, REFIID /*interfaceId*/, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL /*lock*/) override { return E_NOTIMPL; }
};

EmptyFactory factory;

}  // namespace

STDAPI DllGetClassObject(REFCLSID /*classId*/, REFIID interfaceId, void** object) {
    return factory.QueryInterface(interfaceId, object);
}

STDAPI DllCanUnloadNow() {
    return S_OK;
}
