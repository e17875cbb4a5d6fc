// A library's original function, even if a test has replaced it.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace kvn::model::test {

template <typename Function>
Function* Genuine(const wchar_t* library, const char* name) {
    const FARPROC found = GetProcAddress(GetModuleHandleW(library), name);
    if (found == nullptr) throw std::runtime_error(std::string("there is no function ") + name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(found));
}

}  // namespace kvn::model::test
