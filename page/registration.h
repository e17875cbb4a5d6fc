// The generic registration behind DllRegisterServer. It does not name the class that the module serves: installers
// write that entry themselves, and those who rely on this one must keep finding it.
#pragma once

#include <windows.h>

namespace kvn::page {

// S_OK, or SELFREG_E_CLASS when a key or value could not be written.
HRESULT WriteRegistration();

// Removes what WriteRegistration wrote, and the class's key when nothing else is in it.
void RemoveRegistration();

}  // namespace kvn::page
