// Owning types of the host, beyond those in platform/.
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

// The thread's single-threaded COM apartment, as the shell's property sheets have it. It is made before every interface
// pointer of the thread, and destroyed after them.
class SheetApartment {
public:
    SheetApartment() : result(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    ~SheetApartment() {
        if (FAILED(result)) return;
        CoFreeUnusedLibrariesEx(0, 0);  // at once: COM would keep an unused DLL for a while
        CoUninitialize();
    }
    SheetApartment(const SheetApartment&) = delete;
    SheetApartment& operator=(const SheetApartment&) = delete;

private:
    HRESULT result;
};

}  // namespace kvn::control_panel
