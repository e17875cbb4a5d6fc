// Access to the registry: the attached mouse, the values of a mouse model, the machine-wide default.
#pragma once

#include <windows.h>

#include <optional>

#include "model/device_record.h"
#include "model/profile.h"
#include "model/registry_changes.h"
#include "model/registry_values.h"
#include "model/stored_settings.h"

namespace kvn::model {

// Reads one value of the base key, of any type, into the caller's buffer. A value larger than the buffer counts as
// failed and leaves the buffer unchanged. The service may be writing at this moment, so a failed read is repeated: up
// to ten times, 50 ms apart. True on failure: docs/kept-behaviour.md.
[[nodiscard]] bool ReadCurrentDeviceValue(RegistryValue value, void* buffer, DWORD bufferBytes);

// One number of the attached mouse, read in the same way; nothing on failure.
[[nodiscard]] std::optional<std::uint32_t> ReadCurrentDeviceNumber(RegistryValue value);

// Writes one value of the mouse model's key, which is created if it is missing. A length of 0 means the usual one: 4
// bytes of a REG_DWORD, the characters of a REG_SZ without its final zero. True on failure: docs/kept-behaviour.md.
[[nodiscard]] bool WriteModelValue(std::uint32_t vid, std::uint32_t pid, RegistryValue value, const void* data,
                                   DWORD lengthInBytes);

// Carries out one write of a change. False if the key cannot be created or the value cannot be written.
[[nodiscard]] bool CarryOut(const RegistryWrite& write, std::uint32_t vid, std::uint32_t pid);

// A larger value counts as missing: no list that the page writes is that long.
inline constexpr DWORD kMaxStoredBytes = DWORD{1024} * 1024;

// The current values of the mouse model's key, of any type; nothing for a value that is missing or cannot be read.
[[nodiscard]] StoredBytes ReadModelValues(std::uint32_t vid, std::uint32_t pid);

// The machine-wide function of the wheel button; nothing unless there is one of type REG_DWORD.
[[nodiscard]] std::optional<FunctionCode> ReadDefaultCenterBinding();

// The defaults of a new profile, with the machine-wide function of the wheel button, if there is one.
[[nodiscard]] ProfileRecord NewProfileRecord();

// The attached mouse; nothing if a value is missing or a capability is out of its range.
[[nodiscard]] std::optional<DeviceRecord> ReadCurrentDevice();

}  // namespace kvn::model
