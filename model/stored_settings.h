// The selected profile, read back from the values of a mouse model's key. Other programs may have changed them; values
// that make no sense are dropped.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/enum_array.h"
#include "model/profile.h"
#include "model/registry_values.h"

namespace kvn::model {

// The bytes of the values as they are in the registry, of any type; nothing where there is no value.
using StoredBytes = EnumArray<RegistryValue, std::optional<std::vector<std::uint8_t>>, kRegistryValues.size()>;

// Nothing where a value is missing.
struct StoredSettings {
    EnumArray<SettingField, std::optional<std::int32_t>, kSettingFieldCount> values;
    EnumArray<ButtonSlot, std::optional<EtcKey>, kButtonSlotCount> etcKeys;
    std::optional<std::vector<ApplicationEntry>> applications;
    std::optional<std::vector<GestureEntry>> gestures;
};

// A number of more than four bytes counts as missing, as does a function or horizontal speed out of its range; a short
// number fills the low bytes. The flying-scroll numbers are not checked. A text ends at its first zero, if it has one.
// arbitraryKeyText is the heading that a text of keys may carry.
StoredSettings StoredSettingsFrom(const StoredBytes& bytes, std::wstring_view arbitraryKeyText);

// The stored settings, with those of `fallback` where a value is missing.
ProfileSettings CompletedFrom(const StoredSettings& stored, const ProfileSettings& fallback);

// The entries of a REG_MULTI_SZ: each ends at a zero or with the block, and an empty one ends the list. Missing fields
// are empty; anything after the last field of an entry is ignored. A function that is not a number is kAbnormalValue.
std::vector<ApplicationEntry> ApplicationsFromMultiString(std::wstring_view block);
std::vector<GestureEntry> GesturesFromMultiString(std::wstring_view block, std::wstring_view arbitraryKeyText);

}  // namespace kvn::model
