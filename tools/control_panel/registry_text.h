// Text values of the registry, by root and path. An empty value name (nullptr) is the key's default value.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace kvn::control_panel {

// Nothing if the value is missing or is no text; environment variables in it are expanded.
std::optional<std::wstring> ReadRegistryText(HKEY root, const std::wstring& path, const wchar_t* valueName);

// Creates the key if it is missing. Throws HostError.
void WriteRegistryText(HKEY root, const std::wstring& path, const wchar_t* valueName, const std::wstring& text);

// Removes the key and everything below it; a missing key is no failure. Throws HostError.
void DeleteRegistryTree(HKEY root, const std::wstring& path);

// The names of the keys directly below; none if the key is missing.
std::vector<std::wstring> RegistrySubkeys(HKEY root, const std::wstring& path);

}  // namespace kvn::control_panel
