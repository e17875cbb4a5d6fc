#include "service/tray/greeting.h"

#include <windows.h>

#include "model/registry_values.h"
#include "platform/unique_resource.h"

namespace kvn::service {

bool IsFirstStart() {
    platform::UniqueRegistryKey key;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, model::kBaseKey, 0, nullptr, 0, KEY_QUERY_VALUE | KEY_SET_VALUE, nullptr,
                        key.Receive(), nullptr) != ERROR_SUCCESS) {
        return false;
    }
    if (RegQueryValueExW(key.Get(), kGreetedValue, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS) return false;
    const DWORD greeted = 1;
    return RegSetValueExW(key.Get(), kGreetedValue, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&greeted),
                          sizeof greeted) == ERROR_SUCCESS;
}

}  // namespace kvn::service
