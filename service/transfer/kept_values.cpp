#include "service/transfer/kept_values.h"

#include <algorithm>

#include "model/registry_values.h"
#include "platform/unique_resource.h"

namespace kvn::service {
namespace {

using platform::UniqueRegistryKey;

bool IsGone(LSTATUS status) {
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

}  // namespace

KeptValues::KeptValues(const MouseModel& mouse, std::span<const model::RegistryWrite> writes)
    : path(model::MouseModelKey(mouse.vid, mouse.pid)) {
    UniqueRegistryKey key;
    const LSTATUS opened = RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_QUERY_VALUE, key.Receive());
    wasThere = opened == ERROR_SUCCESS;
    isComplete = IsGone(opened);
    for (const model::RegistryWrite& write : writes) {
        if (!Keep(key.Get(), model::RowOf(write.value).name)) isComplete = false;
    }
}

bool KeptValues::Keep(HKEY key, const wchar_t* name) {
    Value& value = values.emplace_back();
    value.name = name;
    if (key == nullptr) return true;
    DWORD size = 0;
    const LSTATUS asked = RegQueryValueExW(key, name, nullptr, nullptr, nullptr, &size);
    if (asked != ERROR_SUCCESS) return IsGone(asked);
    value.wasThere = true;
    value.bytes.resize(std::size_t{size} + 1);  // never empty: without a buffer only the size is queried
    if (RegQueryValueExW(key, name, nullptr, &value.type, value.bytes.data(), &size) != ERROR_SUCCESS) return false;
    value.bytes.resize(size);
    return true;
}

bool KeptValues::Remove() const {
    if (!wasThere) return true;
    UniqueRegistryKey key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_SET_VALUE, key.Receive()) != ERROR_SUCCESS) return false;
    return std::ranges::all_of(values,
                               [&](const Value& value) { return IsGone(RegDeleteValueW(key.Get(), value.name)); });
}

bool KeptValues::Restore() const {
    if (!wasThere) return IsGone(RegDeleteKeyW(HKEY_CURRENT_USER, path.c_str()));
    UniqueRegistryKey key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_SET_VALUE, key.Receive()) != ERROR_SUCCESS) return false;
    bool isRestored = true;
    for (const Value& value : values) {
        if (!PutBack(key.Get(), value)) isRestored = false;
    }
    return isRestored;
}

bool KeptValues::PutBack(HKEY key, const Value& value) {
    if (!value.wasThere) return IsGone(RegDeleteValueW(key, value.name));
    return RegSetValueExW(key, value.name, 0, value.type, value.bytes.data(), static_cast<DWORD>(value.bytes.size())) ==
           ERROR_SUCCESS;
}

}  // namespace kvn::service
