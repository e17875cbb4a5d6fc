// Replaces Windows Installer's two functions when the program looks them up.
#pragma once

#include <windows.h>

#include <msi.h>

#include <cstring>
#include <string>

#include "tests/support/replaced_import.h"

namespace kvn::test {

// The installer's answers, and the questions to it.
struct InstallerState {
    UINT targetAnswer = ERROR_SUCCESS;
    INSTALLSTATE pathAnswer = INSTALLSTATE_LOCAL;
    std::wstring path = L"C:\\real\\program.exe";
    std::wstring asked;  // one line for each shortcut: its path, and the question about its program
};

class InstallerStandIn {
public:
    InstallerStandIn() { state = InstallerState{}; }

    InstallerState* operator->() const { return &state; }

private:
    static UINT WINAPI GetTarget(LPCWSTR shortcut, LPWSTR product, LPWSTR feature, LPWSTR component) {
        state.asked += shortcut;
        // The longest texts that are allowed.
        lstrcpyW(product, std::wstring(38, L'p').c_str());
        lstrcpyW(feature, std::wstring(38, L'f').c_str());
        lstrcpyW(component, std::wstring(38, L'c').c_str());
        if (state.targetAnswer != ERROR_SUCCESS) state.asked += L'\n';
        return state.targetAnswer;
    }
    static INSTALLSTATE WINAPI GetPath(LPCWSTR product, LPCWSTR component, LPWSTR buffer, LPDWORD size) {
        state.asked += L"|" + std::wstring(product) + L"|" + component + L"|" + std::to_wstring(*size) + L"\n";
        lstrcpynW(buffer, state.path.c_str(), static_cast<int>(*size));
        return state.pathAnswer;
    }

    template <typename Function>
    static FARPROC AsFunction(Function* function) {
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
    }

    static inline InstallerState state;
    // The original function, by its address: a call by name would come back here.
    const ReplacedImport<"GetProcAddress", decltype(GetProcAddress)> find{
        GetModuleHandleW(nullptr), [original = &GetProcAddress](HMODULE module, LPCSTR name) {
            if (std::strcmp(name, "MsiGetShortcutTargetW") == 0) return AsFunction(&GetTarget);
            if (std::strcmp(name, "MsiGetComponentPathW") == 0) return AsFunction(&GetPath);
            return original(module, name);
        }};
};

}  // namespace kvn::test
