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

// Reads one value of the base key into the caller's buffer of so many bytes, whatever the value's type; a larger value
// counts as failed and leaves the buffer alone. The service may be writing just now, so a failed read is tried again:
// up to ten times, 50 ms apart. True on failure: docs/kept-behaviour.md.
[[nodiscard]] bool ReadCurrentDeviceValue(RegistryValue value, void* buffer, DWORD bufferBytes);

// Writes one value of the model's key, which is made when it is missing. A length of 0 means the natural one: 4 bytes
// of a REG_DWORD, the characters of a REG_SZ without its final zero. True on failure: docs/kept-behaviour.md.
[[nodiscard]] bool WriteModelValue(std::uint32_t vid, std::uint32_t pid, RegistryValue value, const void* data,
                                   DWORD lengthInBytes);

// Carries out one write of a change. False when the key cannot be made or the value not be written.
[[nodiscard]] bool CarryOut(const RegistryWrite& write, std::uint32_t vid, std::uint32_t pid);

// A value of more bytes counts as missing: no list that the page writes needs as much.
inline constexpr DWORD kMaxStoredBytes = DWORD{1024} * 1024;

// The values of the model's key as they are just now, whatever their types; nothing for one that is missing or cannot
// be read.
[[nodiscard]] StoredBytes ReadModelValues(std::uint32_t vid, std::uint32_t pid);

// The machine-wide function of the wheel button; nothing unless there is one of type REG_DWORD.
[[nodiscard]] std::optional<FunctionCode> ReadDefaultCenterBinding();

// The defaults of a new profile, with the machine-wide function of the wheel button when there is one.
[[nodiscard]] ProfileRecord NewProfileRecord();

// The attached mouse; nothing when a value is missing or a capability is out of its range.
[[nodiscard]] std::optional<DeviceRecord> ReadCurrentDevice();

}  // namespace kvn::model
