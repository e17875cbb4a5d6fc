// The page's stored settings: the registry values and files that the tests read, create and remove.
#pragma once

#include <windows.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kvn::end_to_end {

// The sample mouse's key below HKEY_CURRENT_USER.
inline constexpr wchar_t kModelKey[] = L"Software\\KORVEN\\MouseUtility\\VID1234PID5678";

// By name. The values are texts, so that a report shows differences: a number in decimal, or a text with its stored
// size.
using RegistryValues = std::map<std::string, std::string>;

// All values of the sample mouse's key; none if it is missing.
RegistryValues ModelValues();
// The mark in ModelValues for a REG_SZ that is stored without its final zero.
std::string UnterminatedText(const std::wstring& text);
// The same for a REG_MULTI_SZ.
std::string TextList(const std::vector<std::wstring>& texts);

// Removes the page's keys of the current user.
void RemoveRegistryState();

// %APPDATA%\KORVEN\Tarsel3\.
std::wstring SettingsFolder();
void RemoveSettingsFolder();
std::vector<std::wstring> FilesIn(const std::wstring& folder);
void RemoveFolder(const std::wstring& folder);

bool Exists(const std::wstring& path);
// Throw StoryError if the file cannot be read or written. The folder of a new file is created.
std::string ReadFileBytes(const std::wstring& path);
void WriteFileBytes(const std::wstring& path, const std::string& bytes);

// Sets a text in the registry during a test, and restores the old one afterwards. An empty name means the key's default
// value. Missing keys are created, and stay without the value.
class TemporaryText {
public:
    TemporaryText(HKEY rootKey, std::wstring keyPath, std::wstring valueName, const std::wstring& text);
    ~TemporaryText();
    TemporaryText(const TemporaryText&) = delete;
    TemporaryText& operator=(const TemporaryText&) = delete;

private:
    HKEY root;
    std::wstring key;
    std::wstring name;
    std::optional<std::wstring> before;
};

}  // namespace kvn::end_to_end
