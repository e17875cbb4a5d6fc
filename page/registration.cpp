#include "page/registration.h"

#include <olectl.h>

#include <array>
#include <iterator>
#include <string_view>

#include "platform/unique_resource.h"

namespace kvn::page {
namespace {

constexpr wchar_t kHandlerKey[] =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Controls Folder\\Display\\shellex\\PropertySheetHandlers\\"
    L"Control Panel Extention Sample";
constexpr wchar_t kClassKey[] = L"CLSID\\{3BF82320-3F22-11d0-90FD-0040C757956E}";
constexpr wchar_t kServerKey[] = L"CLSID\\{3BF82320-3F22-11d0-90FD-0040C757956E}\\InProcServer32";

struct RegistrationEntry {
    HKEY root;
    const wchar_t* key;
    const wchar_t* valueName;  // null: the default value
    std::wstring_view text;
};

const std::array<RegistrationEntry, 3> kEntries{{
    {HKEY_LOCAL_MACHINE, kHandlerKey, nullptr, L"{3BF82320-3F22-11d0-90FD-0040C757956E}"},
    {HKEY_CLASSES_ROOT, kServerKey, nullptr, L"PANEL.CPL"},
    {HKEY_CLASSES_ROOT, kServerKey, L"ThreadingModel", L"Apartment"},
}};

// The keys that the entries make, a key below another before it.
struct RegistrationKey {
    HKEY root;
    const wchar_t* key;
};
const std::array<RegistrationKey, 3> kKeys{
    {{HKEY_LOCAL_MACHINE, kHandlerKey}, {HKEY_CLASSES_ROOT, kServerKey}, {HKEY_CLASSES_ROOT, kClassKey}}};

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

}  // namespace

HRESULT WriteRegistration() {
    for (const RegistrationEntry& entry : kEntries) {
        if (!Write(entry)) return SELFREG_E_CLASS;
    }
    return S_OK;
}

HRESULT RemoveRegistration() {
    bool removed = true;
    for (const RegistrationKey& entry : kKeys) {
        const LSTATUS status = RegDeleteKeyW(entry.root, entry.key);
        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) removed = false;
    }
    return removed ? S_OK : SELFREG_E_CLASS;
}

}  // namespace kvn::page
