#include "page/registration.h"

#include <olectl.h>

#include <array>
#include <string_view>

#include "platform/unique_resource.h"

namespace kvn::page {
namespace {

constexpr wchar_t kHandlerKey[] =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Controls Folder\\Display\\shellex\\PropertySheetHandlers\\"
    L"Control Panel Extention Sample";
// Not the class that the DLL serves: docs/kept-behaviour.md.
#define KVN_GENERIC_CLASS L"{3BF82320-3F22-11d0-90FD-0040C757956E}"
constexpr wchar_t kClassKey[] = L"CLSID\\" KVN_GENERIC_CLASS;
constexpr wchar_t kServerKey[] = L"CLSID\\" KVN_GENERIC_CLASS L"\\InProcServer32";

struct RegistrationEntry {
    HKEY root;
    const wchar_t* key;
    const wchar_t* valueName;  // null: the default value
    std::wstring_view text;
};

const std::array<RegistrationEntry, 3> kEntries{{
    {HKEY_LOCAL_MACHINE, kHandlerKey, nullptr, KVN_GENERIC_CLASS},
    {HKEY_CLASSES_ROOT, kServerKey, nullptr, L"PANEL.CPL"},
    {HKEY_CLASSES_ROOT, kServerKey, L"ThreadingModel", L"Apartment"},
}};

bool Write(const RegistrationEntry& entry) {
    platform::UniqueRegistryKey key;
    if (RegCreateKeyExW(entry.root, entry.key, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, key.Receive(),
                        nullptr) != ERROR_SUCCESS) {
        return false;
    }
    const auto bytes = static_cast<DWORD>((entry.text.size() + 1) * sizeof(wchar_t));
    return RegSetValueExW(key.Get(), entry.valueName, 0, REG_SZ, reinterpret_cast<const BYTE*>(entry.text.data()),
                          bytes) == ERROR_SUCCESS;
}

bool IsEmptyKey(HKEY root, const wchar_t* path) {
    platform::UniqueRegistryKey key;
    DWORD subkeys = 0;
    DWORD values = 0;
    return RegOpenKeyExW(root, path, 0, KEY_READ, key.Receive()) == ERROR_SUCCESS &&
           RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, &values, nullptr, nullptr,
                            nullptr, nullptr) == ERROR_SUCCESS &&
           subkeys == 0 && values == 0;
}

}  // namespace

HRESULT WriteRegistration() {
    for (const RegistrationEntry& entry : kEntries) {
        if (!Write(entry)) return SELFREG_E_CLASS;
    }
    return S_OK;
}

void RemoveRegistration() {
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, kHandlerKey);
    RegDeleteKeyW(HKEY_CLASSES_ROOT, kServerKey);
    if (IsEmptyKey(HKEY_CLASSES_ROOT, kClassKey)) RegDeleteKeyW(HKEY_CLASSES_ROOT, kClassKey);
}

}  // namespace kvn::page
