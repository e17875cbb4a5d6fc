// The module's five exported functions.
#include <windows.h>

#include <cpl.h>

#include <new>

#include "page/class_factory.h"
#include "page/module_state.h"
#include "page/registration.h"

namespace {

// The class that this server makes, and that an installer registers as a property-sheet handler of the Mouse control
// panel.
constexpr CLSID kServerClassId = {0xB7C1D9A4, 0x3E52, 0x4F0B, {0x9C, 0x86, 0x2D, 0x7A, 0x51, 0xE8, 0xF0, 0x43}};

}  // namespace

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (classId != kServerClassId) return CLASS_E_CLASSNOTAVAILABLE;
    if (interfaceId != IID_IUnknown && interfaceId != IID_IClassFactory) return E_NOINTERFACE;
    auto* factory = new (std::nothrow) kvn::page::CClassFactory;
    if (factory == nullptr) return E_OUTOFMEMORY;
    factory->AddRef();
    *object = static_cast<IClassFactory*>(factory);
    return S_OK;
}

STDAPI DllCanUnloadNow() {
    return kvn::page::HasServerReferences() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
    return kvn::page::WriteRegistration();
}

STDAPI DllUnregisterServer() {
    return kvn::page::RemoveRegistration();
}

extern "C" LONG APIENTRY CPlApplet(HWND /*window*/, UINT /*message*/, LPARAM /*first*/, LPARAM /*second*/) {
    return 0;
}
