#include "tests/support/platform.h"

#include <windows.h>

#include <cstdlib>
#include <cstring>

#include "platform/unique_resource.h"

namespace kvn::test {
namespace {

int AskVersion() {
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version");
    if (found == nullptr) return 0;
    const char*(__cdecl * version)() = nullptr;
    static_assert(sizeof version == sizeof found);
    std::memcpy(&version, &found, sizeof version);
    return std::atoi(version());
}

}  // namespace

int WineVersion() {
    static const int version = AskVersion();
    return version;
}

bool MayWriteMachineKeys() {
    platform::UniqueRegistryKey key;
    return RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes", 0, KEY_ALL_ACCESS, key.Receive()) == ERROR_SUCCESS;
}

}  // namespace kvn::test
