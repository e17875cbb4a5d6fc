// The generic registration behind DllRegisterServer. It does not name the class that the module serves: installers
// write that entry themselves, and those who rely on this one must keep finding it.
#pragma once

#include <windows.h>

namespace kvn::page {

// S_OK, or SELFREG_E_CLASS when a key or value could not be written.
HRESULT WriteRegistration();

// Removes what WriteRegistration wrote. S_OK, or SELFREG_E_CLASS when something that was there could not be removed.
HRESULT RemoveRegistration();

}  // namespace kvn::page
