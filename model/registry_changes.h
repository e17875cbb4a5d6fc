// The registry values that a change of settings writes, with their order and data.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/profile.h"
#include "model/registry_values.h"

namespace kvn::model {

// One value to write. RowOf(value).type decides which member counts.
struct RegistryWrite {
    RegistryValue value;
    std::int32_t number = 0;
    std::wstring text;  // of a REG_MULTI_SZ: every character of the block, final zeros included

    friend bool operator==(const RegistryWrite&, const RegistryWrite&) = default;
};

// The values in which the two settings differ, in the order in which an apply writes them.
[[nodiscard]] std::vector<RegistryWrite> ChangedValues(const ProfileSettings& before, const ProfileSettings& after);

// Every value of the settings, in the same order.
[[nodiscard]] std::vector<RegistryWrite> AllValues(const ProfileSettings& settings);

// Every number of the settings, in the order in which a new default profile writes them.
[[nodiscard]] std::vector<RegistryWrite> AllNumbers(const SettingValues& values);

// The lists of a profile as a REG_MULTI_SZ: every entry ended by a zero, the block by one more, fields within an entry
// separated by TAB. An empty list is a single zero.
std::wstring ApplicationsToMultiString(const std::vector<ApplicationEntry>& applications);
std::wstring GesturesToMultiString(const std::vector<GestureEntry>& gestures);

}  // namespace kvn::model
