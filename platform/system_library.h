// Functions of Windows' own libraries that few users ever need: their libraries are loaded when first asked for, so
// that opening the page does not wait for them.
#pragma once

#include <windows.h>

namespace kvn::platform {

// The address of the function; null when this Windows lacks it. The library is loaded by its full path, since one of
// its name beside the host program is not Windows'. It then stays: a library may have started threads of its own.
[[nodiscard]] void* FindSystemFunction(const wchar_t* library, const char* name);

template <typename Function>
Function* SystemFunction(const wchar_t* library, const char* name) {
    return reinterpret_cast<Function*>(FindSystemFunction(library, name));
}

}  // namespace kvn::platform
