// Owning types for what the host gets from Windows, beyond those that platform/ has.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <prsht.h>

#include "platform/com_pointer.h"
#include "platform/unique_resource.h"

namespace kvn::control_panel {

using platform::ComPointer;
using platform::Owned;

inline void ReleaseScreenDc(HDC dc) {
    ReleaseDC(nullptr, dc);
}

using MemoryDc = Owned<HDC, &DeleteDC>;
using ScreenDc = Owned<HDC, &ReleaseScreenDc>;
using Page = Owned<HPROPSHEETPAGE, &DestroyPropertySheetPage>;
template <typename Text>
using LocalText = Owned<Text, &LocalFree>;

// The thread's single-threaded COM apartment, as the shell's property sheets have it. Made before, and gone after,
// every interface pointer of the thread.
class SheetApartment {
public:
    SheetApartment() : result(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    ~SheetApartment() {
        if (FAILED(result)) return;
        CoFreeUnusedLibrariesEx(0, 0);  // without the delay that COM keeps an unused DLL for
        CoUninitialize();
    }
    SheetApartment(const SheetApartment&) = delete;
    SheetApartment& operator=(const SheetApartment&) = delete;

private:
    HRESULT result;
};

}  // namespace kvn::control_panel
