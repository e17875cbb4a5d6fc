// The names of registry values that are to be written.
#pragma once

#include <string>
#include <vector>

#include "model/registry_changes.h"

namespace kvn::model::test {

inline std::vector<std::wstring> NamesOf(const std::vector<RegistryWrite>& writes) {
    std::vector<std::wstring> names;
    for (const RegistryWrite& write : writes) names.emplace_back(RowOf(write.value).name);
    return names;
}

}  // namespace kvn::model::test
