// Writing the values of the attached mouse, which the service publishes for the page.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "model/registry_values.h"
#include "platform/unique_resource.h"

namespace kvn::model {

// The key of the published values, for writing; it is created if it is missing. Empty if that fails.
[[nodiscard]] platform::UniqueRegistryKey OpenPublishedKey();

// Writes a value under its name and with its type; a text includes its final zero. False if it cannot be written.
[[nodiscard]] bool WritePublished(HKEY key, RegistryValue value, std::uint32_t number);
[[nodiscard]] bool WritePublished(HKEY key, RegistryValue value, const std::wstring& text);

}  // namespace kvn::model
