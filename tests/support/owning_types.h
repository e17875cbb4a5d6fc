// Owning types of the tests, beyond those in platform/.
#pragma once

#include <windows.h>

#include "platform/unique_resource.h"

namespace kvn::test {

using UniqueWindow = platform::Owned<HWND, &DestroyWindow>;
using UniqueMemoryContext = platform::Owned<HDC, &DeleteDC>;
using UniqueFont = platform::Owned<HFONT, &DeleteObject>;
using UniqueModule = platform::Owned<HMODULE, &FreeLibrary>;
// A process's arguments, as CommandLineToArgvW returns them.
using UniqueArguments = platform::Owned<wchar_t**, &LocalFree>;

// A window class for one test, removed before the next test.
class RegisteredClass {
public:
    RegisteredClass(const wchar_t* className, WNDPROC procedure) : name(className) {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = name;
        RegisterClassW(&windowClass);
    }
    RegisteredClass(const RegisteredClass&) = delete;
    RegisteredClass& operator=(const RegisteredClass&) = delete;
    ~RegisteredClass() { UnregisterClassW(name, GetModuleHandleW(nullptr)); }

private:
    const wchar_t* name;  // a constant
};

}  // namespace kvn::test
