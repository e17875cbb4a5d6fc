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

// By name. The values are texts, so that a difference shows in a report: a number in decimal, or a text with its size
// as it is stored.
using RegistryValues = std::map<std::string, std::string>;

// All values of the sample mouse's key, which may not be there.
RegistryValues ModelValues();
// The mark in ModelValues for a REG_SZ that is stored without its final zero.
std::string UnterminatedText(const std::wstring& text);
// The same for a REG_MULTI_SZ.
std::string TextList(const std::vector<std::wstring>& texts);

// Removes the page's keys of the current user.
void RemoveRegistryState();

// %APPDATA%\KORVEN\Tarsel3\ and all that is in it.
std::wstring SettingsFolder();
void RemoveSettingsFolder();
std::vector<std::wstring> FilesIn(const std::wstring& folder);
void RemoveFolder(const std::wstring& folder);

bool Exists(const std::wstring& path);
// Throw StoryError when the file cannot be read or written. The folder of a new file is made.
std::string ReadFileBytes(const std::wstring& path);
void WriteFileBytes(const std::wstring& path, const std::string& bytes);

// A text in the registry for the time of a test; afterwards it is what it was before. An empty name means the key's
// default value. Keys that were not there are made, and stay without the value.
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
