// The generic registration behind DllRegisterServer. It does not name the class that the module serves: installers
// write that entry themselves, and others rely on this one.
#pragma once

#include <windows.h>

namespace kvn::page {

// S_OK, or SELFREG_E_CLASS if a key or value could not be written.
HRESULT WriteRegistration();

// Removes the values of WriteRegistration, and the class's key if nothing else is in it.
void RemoveRegistration();

}  // namespace kvn::page
