// Text values of the registry, by root and path. An empty value name (nullptr) is the key's default value.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace kvn::control_panel {

// Nothing when the value is missing or is no text; environment variables in it are replaced.
std::optional<std::wstring> ReadRegistryText(HKEY root, const std::wstring& path, const wchar_t* valueName);

// Makes the key when it is missing. Throws HostError.
void WriteRegistryText(HKEY root, const std::wstring& path, const wchar_t* valueName, const std::wstring& text);

// Removes the key and everything below it; a key that is not there is no failure. Throws HostError.
void DeleteRegistryTree(HKEY root, const std::wstring& path);

// The names of the keys directly below; none when the key is missing.
std::vector<std::wstring> RegistrySubkeys(HKEY root, const std::wstring& path);

}  // namespace kvn::control_panel
