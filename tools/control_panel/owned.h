// Owning types for what the host gets from Windows, beyond those that platform/ has.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <prsht.h>

#include "platform/unique_resource.h"

namespace kvn::control_panel {

using platform::Owned;

inline void ReleaseScreenDc(HDC dc) {
    ReleaseDC(nullptr, dc);
}

inline void ReleaseInterface(IUnknown* object) {
    object->Release();
}

using MemoryDc = Owned<HDC, &DeleteDC>;
using ScreenDc = Owned<HDC, &ReleaseScreenDc>;
using Page = Owned<HPROPSHEETPAGE, &DestroyPropertySheetPage>;
template <typename Text>
using LocalText = Owned<Text, &LocalFree>;
template <typename Interface>
using ComPtr = Owned<Interface*, &ReleaseInterface>;

// The thread's single-threaded COM apartment, as the shell's property sheets have it. Made before, and gone after,
// every interface pointer of the thread.
class ComApartment {
public:
    ComApartment() : result(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    ~ComApartment() {
        if (FAILED(result)) return;
        CoFreeUnusedLibrariesEx(0, 0);  // without the delay that COM keeps an unused DLL for
        CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

private:
    HRESULT result;
};

}  // namespace kvn::control_panel
