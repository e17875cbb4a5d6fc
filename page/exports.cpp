// The module's five exported functions.
#include <windows.h>

#include <cpl.h>

#include <new>

#include "page/class_factory.h"
#include "page/module_state.h"
#include "page/registration.h"
#include "platform/memory_reserve.h"
#include "resources/server_class.h"

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (classId != kvn::resources::kServerClassId) return CLASS_E_CLASSNOTAVAILABLE;
    if (interfaceId != IID_IUnknown && interfaceId != IID_IClassFactory) return E_NOINTERFACE;
    kvn::platform::KeepMemoryReserve();
    auto* factory = new (std::nothrow) kvn::page::CClassFactory;
    if (factory == nullptr) return E_OUTOFMEMORY;
    factory->AddRef();
    *object = static_cast<IClassFactory*>(factory);
    return S_OK;
}

STDAPI DllCanUnloadNow() {
    if (kvn::page::HasServerReferences()) return S_FALSE;
    kvn::page::GiveBackModule();
    return S_OK;
}

STDAPI DllRegisterServer() {
    return kvn::page::WriteRegistration();
}

STDAPI DllUnregisterServer() {
    kvn::page::RemoveRegistration();
    return S_OK;
}

extern "C" LONG APIENTRY CPlApplet(HWND /*window*/, UINT /*message*/, LPARAM /*first*/, LPARAM /*second*/) {
    return 0;
}
