// The registry side of the model: reading the attached mouse, reading and writing a model's
// values, the machine-wide default.
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
// up to ten times, 50 ms apart. Returns true on failure.
bool ReadCurrentDeviceValue(RegistryValue value, void* buffer, DWORD bufferBytes);

// Writes one value of the model's key, which is made when it is missing. A length of 0 means the natural one: 4 bytes
// of a REG_DWORD, the characters of a REG_SZ without its final zero. Returns true on failure.
bool WriteModelValue(std::uint32_t vid, std::uint32_t pid, RegistryValue value, const void* data, DWORD lengthInBytes);

// The same for a prepared write. Returns true on failure.
bool WriteModelValue(std::uint32_t vid, std::uint32_t pid, const RegistryWrite& write);

// A value of more bytes counts as missing: no list that the page writes needs as much.
inline constexpr DWORD kMaxStoredBytes = DWORD{1024} * 1024;

// The values of the model's key as they are just now, whatever their types; nothing for one that is missing or cannot
// be read.
StoredBytes ReadModelValues(std::uint32_t vid, std::uint32_t pid);

// Reads the machine-wide function of the wheel button over the caller's. Returns true when there is one of type
// REG_DWORD.
bool ReadDefaultCenterBinding(FunctionCode& code);

// The defaults of a new profile, with the machine-wide function of the wheel button when there is one.
ProfileRecord NewProfileRecord();

// The attached mouse; nothing when a value is missing or a capability is out of its range.
std::optional<DeviceRecord> ReadCurrentDevice();

}  // namespace kvn::model
