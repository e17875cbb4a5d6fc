#include "model/registry_access.h"

#include <vector>

#include "platform/unique_resource.h"

namespace kvn::model {
namespace {

using platform::UniqueRegistryKey;

constexpr int kReadAttempts = 10;
constexpr DWORD kReadRetryMilliseconds = 50;

// With full access: docs/kept-behaviour.md.
bool ReadOnce(RegistryValue value, void* buffer, DWORD bufferBytes) {
    UniqueRegistryKey key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, kBaseKey, 0, KEY_ALL_ACCESS, key.Receive()) != ERROR_SUCCESS) return false;
    return RegQueryValueExW(key.Get(), RowOf(value).name, nullptr, nullptr, static_cast<BYTE*>(buffer), &bufferBytes) ==
           ERROR_SUCCESS;
}

bool SetModelValue(std::uint32_t vid, std::uint32_t pid, RegistryValue value, const void* data, DWORD lengthInBytes) {
    UniqueRegistryKey key;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, MouseModelKey(vid, pid).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_ALL_ACCESS, nullptr, key.Receive(), nullptr) != ERROR_SUCCESS) {
        return false;
    }
    const RegistryValueRow& row = RowOf(value);
    return RegSetValueExW(key.Get(), row.name, 0, static_cast<DWORD>(row.type), static_cast<const BYTE*>(data),
                          lengthInBytes) == ERROR_SUCCESS;
}

// If a REG_SZ comes without its final zero but a zero follows in memory, Windows stores that one too. So another
// character follows here (docs/kept-behaviour.md).
bool SetUnterminatedText(std::uint32_t vid, std::uint32_t pid, RegistryValue value, const wchar_t* text) {
    std::wstring guarded = text;
    const auto lengthInBytes = static_cast<DWORD>(guarded.size() * sizeof(wchar_t));
    guarded += L'\xFFFF';
    return SetModelValue(vid, pid, value, guarded.c_str(), lengthInBytes);
}

// A value may grow after its size was queried. Then it counts as missing; the change causes another reading anyway.
std::optional<std::vector<std::uint8_t>> ReadBytes(HKEY key, const wchar_t* name) {
    DWORD size = 0;
    if (RegQueryValueExW(key, name, nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) return std::nullopt;
    if (size > kMaxStoredBytes) return std::nullopt;
    std::vector<std::uint8_t> bytes(std::size_t{size} + 1);  // never empty: without a buffer only the size is queried
    if (RegQueryValueExW(key, name, nullptr, nullptr, bytes.data(), &size) != ERROR_SUCCESS) return std::nullopt;
    bytes.resize(size);
    return bytes;
}

template <typename Buffer>
bool ReadInto(RegistryValue value, Buffer& buffer) {
    return !ReadCurrentDeviceValue(value, &buffer, sizeof buffer);
}

}  // namespace

bool ReadCurrentDeviceValue(RegistryValue value, void* buffer, DWORD bufferBytes) {
    for (int attempt = 0; attempt < kReadAttempts; ++attempt) {
        if (ReadOnce(value, buffer, bufferBytes)) return false;
        Sleep(kReadRetryMilliseconds);
    }
    return true;
}

std::optional<std::uint32_t> ReadCurrentDeviceNumber(RegistryValue value) {
    std::uint32_t number = 0;
    return ReadInto(value, number) ? std::optional(number) : std::nullopt;
}

bool WriteModelValue(std::uint32_t vid, std::uint32_t pid, RegistryValue value, const void* data, DWORD lengthInBytes) {
    if (lengthInBytes != 0) return !SetModelValue(vid, pid, value, data, lengthInBytes);
    if (RowOf(value).type == RegistryType::Dword) return !SetModelValue(vid, pid, value, data, sizeof(DWORD));
    if (RowOf(value).type != RegistryType::String) return true;
    return !SetUnterminatedText(vid, pid, value, static_cast<const wchar_t*>(data));
}

bool CarryOut(const RegistryWrite& write, std::uint32_t vid, std::uint32_t pid) {
    const RegistryType type = RowOf(write.value).type;
    if (type == RegistryType::Dword) return !WriteModelValue(vid, pid, write.value, &write.number, 0);
    const bool isList = type == RegistryType::MultiString;
    const auto lengthInBytes = isList ? static_cast<DWORD>(write.text.size() * sizeof(wchar_t)) : 0;
    return !WriteModelValue(vid, pid, write.value, write.text.c_str(), lengthInBytes);
}

StoredBytes ReadModelValues(std::uint32_t vid, std::uint32_t pid) {
    StoredBytes bytes;
    UniqueRegistryKey key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, MouseModelKey(vid, pid).c_str(), 0, KEY_QUERY_VALUE, key.Receive()) !=
        ERROR_SUCCESS) {
        return bytes;
    }
    for (const RegistryValueRow& row : kRegistryValues) bytes[row.value] = ReadBytes(key.Get(), row.name);
    return bytes;
}

std::optional<FunctionCode> ReadDefaultCenterBinding() {
    UniqueRegistryKey key;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kDefaultBindKey, 0, KEY_READ, key.Receive()) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    FunctionCode stored = kFunctionNone;
    DWORD type = REG_NONE;
    DWORD size = sizeof stored;
    if (RegQueryValueExW(key.Get(), kDefaultCenterValue, nullptr, &type, reinterpret_cast<BYTE*>(&stored), &size) !=
            ERROR_SUCCESS ||
        type != REG_DWORD || size != sizeof stored) {
        return std::nullopt;
    }
    return stored;
}

ProfileRecord NewProfileRecord() {
    const auto center = ReadDefaultCenterBinding();
    return center && *center != kUnsetValue ? DefaultProfileRecord(*center) : DefaultProfileRecord();
}

std::optional<DeviceRecord> ReadCurrentDevice() {
    PublishedDevice published;
    const bool read = ReadInto(RegistryValue::HasTilt, published.hasTilt) &&
                      ReadInto(RegistryValue::ButtonCount, published.buttonCount) &&
                      ReadInto(RegistryValue::Vid, published.vid) && ReadInto(RegistryValue::Pid, published.pid) &&
                      ReadInto(RegistryValue::MouseImage, published.mouseImage) &&
                      ReadInto(RegistryValue::MouseFlag, published.mouseFlag);
    return read ? DeviceFromPublished(published) : std::nullopt;
}

}  // namespace kvn::model
