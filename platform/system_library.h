// Functions of Windows' libraries that few users ever need. Each library is loaded at its first use, so that opening
// the page does not wait for it.
#pragma once

#include <windows.h>

namespace kvn::platform {

// The address of the function; null if this Windows lacks it. The library is loaded by its full path, since a file of
// that name next to the host program is not the one of Windows. It then stays loaded, because it may have started
// threads.
[[nodiscard]] void* FindSystemFunction(const wchar_t* library, const char* name);

template <typename Function>
Function* SystemFunction(const wchar_t* library, const char* name) {
    return reinterpret_cast<Function*>(FindSystemFunction(library, name));
}

}  // namespace kvn::platform
