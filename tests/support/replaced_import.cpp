#include "tests/support/replaced_import.h"

#include <cstring>

namespace kvn::test {

void** FindImport(HMODULE module, const char* functionName) {
    auto* const base = reinterpret_cast<BYTE*>(module);
    const auto* headers =
        reinterpret_cast<const IMAGE_NT_HEADERS*>(base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const IMAGE_DATA_DIRECTORY& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* imported = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; imported->Name != 0; ++imported) {
        const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + imported->OriginalFirstThunk);
        auto** entries = reinterpret_cast<void**>(base + imported->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++entries) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
            const auto* name = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(&name->Name[0]), functionName) == 0) return entries;
        }
    }
    return nullptr;
}

void* ExchangeImport(void** entry, void* function) {
    DWORD protection = 0;
    if (!VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection)) return nullptr;
    void* const previous = *entry;
    *entry = function;
    VirtualProtect(entry, sizeof *entry, protection, &protection);
    return previous;
}

}  // namespace kvn::test
